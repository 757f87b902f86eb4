#include "settings/user_state.h"

#include <charconv>
#include <filesystem>
#include <string>

#include "platform/native_path.h"
#include "platform/system_folders.h"
#include "settings/ini_file.h"
#include "text/path_text.h"

namespace settings {
namespace {

std::string File() {
  return ModCommon::AddSlash(platform::PathText(platform::StateDirectory())) + "window.ini";
}

}  // namespace

std::optional<int> Remembered(std::string_view section, std::string_view key) {
  const std::string text = ModINIOP::ReadIni(File(), section, key);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole ? std::optional(value) : std::nullopt;
}

void Remember(std::string_view section, std::string_view key, int value) {
  std::error_code error;  // not even a place to remember in: nothing is remembered
  std::filesystem::create_directories(platform::StateDirectory(), error);
  WriteValue(File(), section, key, std::to_string(value));
}

bool WantsNotices() { return Remembered("Notices", "Activity").value_or(0) != 0; }

void SetWantsNotices(bool wanted) { Remember("Notices", "Activity", wanted ? 1 : 0); }

}  // namespace settings
