#pragma once

// The lines of a listing, and what they say of a file or folder.

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace ModFtp {

struct FileInfo {
  std::chrono::system_clock::time_point created;
  std::int32_t size = 0;  // bytes; of a folder, of all that is in it
};

/// One line with its line end. Everything is shown as read-only; the three blanks before the size
/// are what clients' parsers have learned. The name is the file's own, but that line breaks in it
/// become "?": nobody can make others see entries that are not there.
std::string ListingLine(std::string_view name, bool isFolder, const FileInfo& info);

/// Whether a name is listed: after a CWD only one with a dot in it would be, but no command leaves
/// that word behind.
bool IsListed(std::string_view name, std::string_view lastCommand);

}  // namespace ModFtp
