#include "platform/media_types.h"

#include <algorithm>
#include <unordered_map>

#include "platform/whole_file.h"

namespace platform {
namespace {

using Table = std::unordered_map<std::string, std::string>;

constexpr std::size_t kLargestTable = std::size_t{1} << 20;  // usual ones have some 50 KiB

std::string ReadTable(const char* path) {
  std::error_code error;
  File file = File::Open(path, File::Mode::kRead, error);
  std::string text = error ? std::string() : ReadWholeFile(file, kLargestTable, error);
  return error ? std::string() : text;
}

// Takes from `text` what comes before the next `separator`, which goes too.
std::string_view TakeUntil(std::string_view& text, std::string_view separators) {
  const std::string_view part = text.substr(0, text.find_first_of(separators));
  text.remove_prefix(std::min(part.size() + 1, text.size()));
  return part;
}

// Lines "50:image/png:*.png", the weightiest first.
Table FromSharedDatabase(std::string_view text) {
  Table table;
  while (!text.empty()) {
    std::string_view line = TakeUntil(text, "\n");
    if (line.starts_with('#')) continue;
    TakeUntil(line, ":");
    const std::string_view type = TakeUntil(line, ":");
    const std::string_view pattern = TakeUntil(line, ":");
    if (pattern.starts_with("*.")) table.emplace(pattern.substr(2), type);
  }
  return table;
}

// Lines "image/jpeg  jpeg jpg jpe".
Table FromMimeTypes(std::string_view text) {
  Table table;
  while (!text.empty()) {
    std::string_view line = TakeUntil(text, "\n");
    const std::string_view type = TakeUntil(line, " \t");
    if (type.starts_with('#')) continue;
    while (!line.empty()) {
      const std::string_view ending = TakeUntil(line, " \t");
      if (!ending.empty()) table.emplace(ending, type);
    }
  }
  return table;
}

Table LoadTable() {
  Table table = FromSharedDatabase(ReadTable("/usr/share/mime/globs2"));
  return table.empty() ? FromMimeTypes(ReadTable("/etc/mime.types")) : table;
}

}  // namespace

std::string MediaTypeOfEnding(std::string_view ending) {
  static const Table table = LoadTable();
  const auto found = table.find(std::string(ending));
  return found == table.end() ? std::string() : found->second;
}

}  // namespace platform
