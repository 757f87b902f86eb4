#include "files/files.h"

#include <algorithm>

#include "files/missing.h"
#include "platform/entry.h"
#include "platform/native_path.h"
#include "platform/whole_file.h"

namespace ModCommon {

bool FileExists(std::string_view path) { return files::OpenIfExists(path).IsOpen(); }

}  // namespace ModCommon

namespace files {
namespace {

namespace fs = std::filesystem;
using platform::ExistingPath;
using platform::File;
using platform::NativePath;
using platform::NativeString;

// Tries the path exactly as written first: the common case, which saves a lookup. If that is
// missing, tries the path found ignoring case.
template <class Action>
auto WithExisting(std::string_view path, std::error_code& error, Action action) {
  const NativeString exact = platform::NativeText(path);
  auto result = action(exact);
  if (!IsMissing(error)) return result;
  const NativeString found = ExistingPath(path);
  return found == exact ? std::move(result) : action(found);
}

// Keeps a link a link by replacing its target.
fs::path Resolved(const fs::path& path) {
  std::error_code error;
  const fs::path target = fs::canonical(path, error);
  return error ? path : target;
}

// Whether the system refused to create a file beside this one or to rename over it: the folder is
// not writable, or the file is a mount point.
bool RefusesAnotherFile(const std::error_code& error) {
  return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
         error == std::errc::read_only_file_system || error == std::errc::device_or_resource_busy;
}

// Not safe against a power failure, but better than losing the user's settings.
std::error_code OverwriteContent(const fs::path& target, std::string_view bytes) {
  std::error_code error;
  if (!fs::exists(target, error)) return std::make_error_code(std::errc::no_such_file_or_directory);
  File file = File::Open(target, File::Mode::kUpdate, error);
  if (!file.IsOpen()) return error;
  file.Write(bytes, error);
  if (!error) file.Flush(error);
  file.Close();
  if (!error) fs::resize_file(target, bytes.size(), error);
  return error;
}

}  // namespace

File OpenFile(std::string_view path, File::Mode mode, std::error_code& error) {
  if (path.empty()) {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
    return {};
  }
  if (mode != File::Mode::kRead) return File::Open(ExistingPath(path), mode, error);
  return WithExisting(path, error,
                      [&](const NativeString& native) { return File::Open(native, mode, error); });
}

File OpenIfExists(std::string_view path) {
  if (path.ends_with('\\')) path.remove_suffix(1);
  std::error_code error;
  return OpenFile(path, File::Mode::kRead, error);
}

std::string ReadFile(std::string_view path, std::error_code& error, std::size_t most) {
  File file = OpenFile(path, File::Mode::kRead, error);
  if (!file.IsOpen()) return {};
  return platform::ReadWholeFile(file, most, error);
}

std::optional<std::string> ReadFile(std::string_view path) {
  std::error_code error;
  std::string content = ReadFile(path, error);
  if (error) return std::nullopt;
  return content;
}

std::error_code AppendToFile(std::string_view path, std::string_view bytes) {
  std::error_code error;
  File file = OpenFile(path, File::Mode::kAppend, error);
  if (file.IsOpen()) file.Write(bytes, error);
  return error;
}

std::error_code WriteFile(std::string_view path, std::string_view bytes) {
  std::error_code error;
  File file = OpenFile(path, File::Mode::kReplace, error);
  if (file.IsOpen()) file.Write(bytes, error);
  return error;
}

std::uint64_t ReadableSize(std::string_view path, std::error_code& error) {
  return WithExisting(
      path, error, [&](const NativeString& native) { return File::ReadableSize(native, error); });
}

std::error_code FlushFolder(std::string_view path) {
  std::error_code error;
  return WithExisting(path, error, [&](const NativeString& native) {
    File::FlushFolder(native, error);
    return error;
  });
}

std::error_code ReplaceContent(std::string_view path, std::string_view bytes) {
  const fs::path target = Resolved(ExistingPath(path));
  if (target.empty()) return std::make_error_code(std::errc::no_such_file_or_directory);
  std::error_code error;
  platform::ReplaceWholeFile(target, bytes, platform::Access::kKept, error);
  return RefusesAnotherFile(error) ? OverwriteContent(target, bytes) : error;
}

std::error_code RemoveFile(std::string_view path) {
  const fs::path native = ExistingPath(path);
  std::error_code error;
  if (fs::is_directory(native, error)) return std::make_error_code(std::errc::is_a_directory);
  if (!platform::RemoveEntry(native, error) && !error) {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
  }
  return error;
}

std::error_code RenamePath(std::string_view from, std::string_view to) {
  const fs::path source = ExistingPath(from);
  const fs::path occupied = ExistingPath(to);
  std::error_code error;
  if (fs::exists(fs::symlink_status(occupied, error)) && !fs::equivalent(source, occupied, error)) {
    return std::make_error_code(std::errc::file_exists);
  }
  // In the folder that was found, but under the name as written.
  platform::MoveEntry(source, occupied.parent_path() / NativePath(to).filename(), error);
  return error;
}

bool FolderExists(std::string_view path) {
  std::error_code error;
  return WithExisting(path, error,
                      [&](const fs::path& native) { return fs::is_directory(native, error); });
}

std::error_code CreateFolder(std::string_view path) {
  std::error_code error;
  if (!fs::create_directory(ExistingPath(path), error) && !error) {
    error = std::make_error_code(std::errc::file_exists);
  }
  return error;
}

std::error_code RemoveFolder(std::string_view path) {
  const fs::path native = ExistingPath(path);
  std::error_code error;
  if (!fs::is_directory(native, error)) {
    return error ? error : std::make_error_code(std::errc::not_a_directory);
  }
  fs::remove(native, error);
  return error;
}

std::vector<platform::DirectoryEntry> ListFolder(std::string_view path, std::error_code& error) {
  return WithExisting(
      path, error, [&](const fs::path& native) { return platform::ListDirectory(native, error); });
}

platform::DirectoryReader ReadFolder(std::string_view path, std::error_code& error) {
  return platform::DirectoryReader(ExistingPath(path), error);
}

platform::OpenFolder OpenFolder(std::string_view path, std::error_code& error) {
  return platform::OpenFolder(ExistingPath(path), error);
}

platform::EntryFacts InspectPath(std::string_view path, std::error_code& error) {
  return WithExisting(
      path, error, [&](const fs::path& native) { return platform::InspectEntry(native, error); });
}

std::optional<platform::FileStamp> StampOf(std::string_view path) {
  std::error_code error;
  const platform::FileStamp stamp = WithExisting(
      path, error, [&](const fs::path& native) { return platform::StampOf(native, error); });
  if (error) return std::nullopt;
  return stamp;
}

}  // namespace files
