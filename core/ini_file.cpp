#include "core/ini_file.h"

#include "core/code_page.h"
#include "core/files.h"
#include "core/ini_text.h"
#include "core/paths.h"

namespace ModINIOP {
namespace {

constexpr std::size_t kMostBytes = 254;

std::size_t CharacterEnd(std::string_view text, std::size_t begin) {
  std::size_t end = begin + 1;
  while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) ++end;
  return end;
}

// As much as fits, measured in the code page in which the value is read, without half a character.
std::string_view CutToBuffer(std::string_view text) {
  std::size_t bytes = 0;
  std::size_t end = 0;
  while (end < text.size()) {
    const std::size_t next = CharacterEnd(text, end);
    bytes += core::ToSystem(text.substr(end, next - end)).size();
    if (bytes > kMostBytes) break;
    end = next;
  }
  return text.substr(0, end);
}

}  // namespace

std::string ReadIni(std::string_view file, std::string_view section, std::string_view key) {
  auto bytes = core::ReadFile(file);
  if (!bytes) return {};
  const auto value = core::IniText(std::move(*bytes)).Find(section, key);
  if (!value) return {};
  const std::string_view cut = CutToBuffer(*value);
  return std::string(core::TrimTrailingBlanks(cut.substr(0, cut.find('\0'))));
}

std::int16_t WriteIni(std::string_view file, std::string_view section, std::string_view key,
                      std::string_view value) {
  auto bytes = core::ReadFile(file);
  // A file that is there but cannot be read must not be replaced by one with this value alone.
  std::error_code error;
  if (!bytes) core::InspectPath(file, error);
  if (!bytes && !error) return 0;
  core::IniText text(bytes ? std::move(*bytes) : std::string());
  text.Set(section, key, value);
  return core::ReplaceContent(file, text.Bytes()) ? 0 : 1;
}

}  // namespace ModINIOP
