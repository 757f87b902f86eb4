#pragma once

// Formats the lines of a listing. Text only; the facts come from file_info.h.

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace ModFtp {

struct FileInfo {
  std::chrono::system_clock::time_point created;
  std::int32_t size = 0;  // bytes; for a folder, of everything in it
};

/// One line with its line end. Everything is shown as read-only; clients' parsers rely on the three
/// blanks before the size. Line breaks in the name become "?", so that no name can forge entries.
std::string ListingLine(std::string_view name, bool isFolder, const FileInfo& info);

/// Whether a name is listed. If `lastCommand` is "CWD", only names with a dot are; no command sets
/// that today.
bool IsListed(std::string_view name, std::string_view lastCommand);

}  // namespace ModFtp
