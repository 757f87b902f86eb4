#include "settings/ini_file.h"

#include <filesystem>
#include <utility>

#include "files/files.h"
#include "files/missing.h"
#include "platform/native_path.h"
#include "settings/ini_change.h"
#include "text/code_page.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace settings {
namespace {

constexpr std::size_t kMostBytes = 254;

// As much as fits, measured in the code page in which the value is read, without half a character.
std::string_view CutToBuffer(std::string_view text) {
  std::size_t bytes = 0;
  std::size_t end = 0;
  while (end < text.size()) {
    const std::size_t next = text::CharacterEnd(text, end);
    bytes += text::ToSystem(text.substr(end, next - end)).size();
    if (bytes > kMostBytes) break;
    end = next;
  }
  return text.substr(0, end);
}

// A link to nothing is there.
bool IsMissing(std::string_view file, const std::error_code& error) {
  if (error == std::errc::not_a_directory) return true;
  std::error_code ignored;
  const auto link = std::filesystem::symlink_status(platform::NativePath(file), ignored);
  return files::IsMissing(error) && !std::filesystem::exists(link);
}

}  // namespace
}  // namespace settings

namespace ModINIOP {

std::string ReadIni(std::string_view file, std::string_view section, std::string_view key) {
  std::error_code error;
  const auto text = settings::ReadIniText(file, error);
  return text ? settings::ValueIn(*text, section, key) : std::string();
}

std::int16_t WriteIni(std::string_view file, std::string_view section, std::string_view key,
                      std::string_view value) {
  return settings::WriteValue(file, section, key, value) ? 0 : 1;
}

}  // namespace ModINIOP

namespace settings {

std::optional<IniText> ReadIniText(std::string_view file, std::error_code& error) {
  std::string bytes = files::ReadFile(file, error);
  if (!error) return IniText(std::move(bytes));
  if (IsMissing(file, error)) error.clear();
  return std::nullopt;
}

std::error_code WriteValue(std::string_view file, std::string_view section, std::string_view key,
                           std::string_view value) {
  IniChange change(file);
  change.Set(section, key, value);
  return change.Save();
}

std::string ValueIn(const IniText& text, std::string_view section, std::string_view key) {
  const auto value = text.Find(section, key);
  if (!value) return {};
  const std::string_view cut = CutToBuffer(*value);
  return std::string(text::TrimTrailingBlanks(cut.substr(0, cut.find('\0'))));
}

}  // namespace settings
