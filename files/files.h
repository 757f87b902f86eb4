#pragma once

// All access to the disk. Functions take path texts (text/path_text.h) and convert them to native
// paths. A name is looked up exactly first and then ignoring case, so that content made on a
// case-insensitive system works everywhere. A new file gets the name as given. A text that has a
// NUL, or is longer than any path, names nothing (platform/native_path.h).
//
// Calls block and run on the calling thread. Failures are error codes; nothing throws.

#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/directory.h"
#include "platform/file.h"

namespace ModCommon {

/// Whether `path`, less one trailing backslash, can be opened for reading. A folder, an unreadable
/// file and an empty name do not exist.
bool FileExists(std::string_view path);

}  // namespace ModCommon

namespace files {

/// Opens a file, see platform::File; not open with `error` set on failure.
platform::File OpenFile(std::string_view path, platform::File::Mode mode, std::error_code& error);

/// Opens a file by the rule of FileExists; not open if it does not exist.
platform::File OpenIfExists(std::string_view path);

/// Far larger than any file of settings, tips or lists that the program writes.
inline constexpr std::size_t kLargestTextFile = std::size_t{1} << 20;

/// Reads a whole file in bounded time: anything but a regular file, or more than `most` bytes, is
/// an error.
std::string ReadFile(std::string_view path, std::error_code& error,
                     std::size_t most = kLargestTextFile);

/// The same, or none if it cannot be read.
std::optional<std::string> ReadFile(std::string_view path);

/// Opens, appends and closes. The file is created if missing.
std::error_code AppendToFile(std::string_view path, std::string_view bytes);

/// Writes a new file or replaces all of an old one's content.
std::error_code WriteFile(std::string_view path, std::string_view bytes);

/// The size of a file that can be opened for reading; an error if it cannot.
std::uint64_t ReadableSize(std::string_view path, std::error_code& error);

/// Returns once the file, content and name, would survive a power cut. It must exist.
std::error_code FlushFile(std::string_view path);

/// Returns once the names in a folder would survive a power cut, see platform::File.
std::error_code FlushFolder(std::string_view path);

/// Replaces the content of a file with `bytes` atomically: after a crash the file has either the
/// old content or the new one.
std::error_code ReplaceContent(std::string_view path, std::string_view bytes);

std::error_code RemoveFile(std::string_view path);

/// Renames or moves a file or folder. That `to` exists already is an error, unless it is the same
/// thing under another case of its name.
std::error_code RenamePath(std::string_view from, std::string_view to);

bool FolderExists(std::string_view path);

/// Creates one folder in an existing one. That it exists already is an error.
std::error_code CreateFolder(std::string_view path);

/// Removes an empty folder.
std::error_code RemoveFolder(std::string_view path);

/// The entries of a folder in the order of their upper-cased names.
std::vector<platform::DirectoryEntry> ListFolder(std::string_view path, std::error_code& error);

/// The same a few entries at a time and unsorted.
platform::DirectoryReader ReadFolder(std::string_view path, std::error_code& error);

platform::EntryFacts InspectPath(std::string_view path, std::error_code& error);

/// The state of a file, to be compared with a later one; none if there is no such file.
std::optional<platform::FileStamp> StampOf(std::string_view path);

}  // namespace files
