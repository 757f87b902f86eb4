#include "settings/application_settings.h"

#include "settings/registry_key.h"

namespace settings {
namespace {

std::string SubkeyOf(std::string_view application, std::string_view section) {
  return "Software\\Tarnwerk\\" + std::string(application) + "\\" + std::string(section);
}

}  // namespace

std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view standard) {
  std::error_code error;
  const Modreg::Key opened =
      Modreg::Key::Open(Modreg::Root::kCurrentUser, SubkeyOf(application, section), error);
  const std::string value = opened.QueryText(key, error);
  return error ? std::string(standard) : value;
}

bool SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                 std::string_view value) {
  std::error_code error;
  Modreg::Key opened =
      Modreg::Key::Create(Modreg::Root::kCurrentUser, SubkeyOf(application, section), error);
  opened.SetText(key, value, error);
  return !error;
}

}  // namespace settings
