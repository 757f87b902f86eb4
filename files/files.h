#pragma once

// All access to the disk. Functions take path texts (text/path_text.h) and convert them to native
// paths. A name is looked up exactly first and then ignoring case, so that content made on a
// case-insensitive system works everywhere. A new file gets the name as given. A text with a NUL,
// or longer than any path, is not a path (platform/native_path.h).
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

/// Whether `path`, without one trailing backslash, can be opened for reading. False for a folder,
/// an unreadable file and an empty name.
bool FileExists(std::string_view path);

}  // namespace ModCommon

namespace files {

/// Opens a file, see platform::File. On failure the result is not open and `error` is set.
platform::File OpenFile(std::string_view path, platform::File::Mode mode, std::error_code& error);

/// Opens a file that exists by the definition of FileExists; else the result is not open.
platform::File OpenIfExists(std::string_view path);

/// Far larger than any text file that the program writes (settings, tips, lists).
inline constexpr std::size_t kLargestTextFile = std::size_t{1} << 20;

/// Reads a whole file in bounded time: anything but a regular file, or more than `most` bytes, is
/// an error.
std::string ReadFile(std::string_view path, std::error_code& error,
                     std::size_t most = kLargestTextFile);

/// The same; none on any error.
std::optional<std::string> ReadFile(std::string_view path);

/// Opens, appends and closes. The file is created if missing.
std::error_code AppendToFile(std::string_view path, std::string_view bytes);

/// Creates a file or replaces its whole content. Not atomic, see ReplaceContent.
std::error_code WriteFile(std::string_view path, std::string_view bytes);

/// The size of a file. An error if it cannot be opened for reading.
std::uint64_t ReadableSize(std::string_view path, std::error_code& error);

/// Returns once the names in a folder would survive a power failure, see platform::File.
std::error_code FlushFolder(std::string_view path);

/// Atomically replaces the content of a file with `bytes`: after a crash the file has either the
/// old content or the new.
std::error_code ReplaceContent(std::string_view path, std::string_view bytes);

std::error_code RemoveFile(std::string_view path);

/// Renames or moves a file or folder. An existing `to` is an error, unless it is the same entry
/// with its name in another case.
std::error_code RenamePath(std::string_view from, std::string_view to);

bool FolderExists(std::string_view path);

/// Creates a folder in an existing one. It is an error if it already exists.
std::error_code CreateFolder(std::string_view path);

/// Removes an empty folder.
std::error_code RemoveFolder(std::string_view path);

/// The entries of a folder, sorted by upper-cased name.
std::vector<platform::DirectoryEntry> ListFolder(std::string_view path, std::error_code& error);

/// The same, unsorted and a few entries at a time.
platform::DirectoryReader ReadFolder(std::string_view path, std::error_code& error);

/// The same, for looking at its entries.
platform::OpenFolder OpenFolder(std::string_view path, std::error_code& error);

platform::EntryFacts InspectPath(std::string_view path, std::error_code& error);

/// The stamp of a file, to be compared with a later one; none if there is no such file.
std::optional<platform::FileStamp> StampOf(std::string_view path);

}  // namespace files
