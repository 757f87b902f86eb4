#include "settings/application_settings.h"

#include "settings/linux/state_file.h"

namespace settings {
namespace {

constexpr std::string_view kFile = "settings.ini";

std::string SectionOf(std::string_view application, std::string_view section) {
  return std::string(application) + "\\" + std::string(section);
}

}  // namespace

std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view standard) {
  std::error_code error;
  const auto value = StateFile(kFile).Find(SectionOf(application, section), key, error);
  return value.value_or(std::string(standard));
}

bool SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                 std::string_view value) {
  return !StateFile(kFile).Set(SectionOf(application, section), key, value);
}

}  // namespace settings
