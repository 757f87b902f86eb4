#include "platform/whole_file.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

void RemoveIfPresent(const fs::path& path) {
  std::error_code ignored;
  fs::remove(path, ignored);
}

void KeepPermissions(const fs::path& from, const fs::path& to) {
  std::error_code ignored;
  const fs::file_status status = fs::status(from, ignored);
  if (fs::exists(status)) fs::permissions(to, status.permissions(), ignored);
}

// Leaves no part of the content behind.
void WriteWholeFile(const fs::path& path, std::string_view bytes, Access access,
                    std::error_code& error) {
  const bool userAlone = access == Access::kUserAlone;
  if (userAlone) RemoveIfPresent(path);  // a crash may have left one that others have open
  File file =
      File::Open(path, userAlone ? File::Mode::kCreatePrivate : File::Mode::kReplace, error);
  if (!file.IsOpen()) return;
  file.Write(bytes, error);
  if (!error) file.Flush(error);
  file.Close();
  if (error) RemoveIfPresent(path);
}

void MoveInPlace(const fs::path& temporary, const fs::path& target, std::error_code& error) {
  fs::rename(temporary, target, error);
  if (error) RemoveIfPresent(temporary);
}

}  // namespace

std::string ReadWholeFile(File& file, std::size_t most, std::error_code& error) {
  // The size is only a hint: files of the system, as in /proc, report 0 and have content.
  constexpr std::size_t kStep = 65536;
  std::string content;
  error.clear();
  for (std::size_t count = kStep; count == kStep && content.size() <= most && !error;) {
    const std::size_t before = content.size();
    content.resize(before + kStep);
    count = file.Read(content.data() + before, kStep, error);
    content.resize(before + count);
  }
  if (!error && content.size() > most) error = std::make_error_code(std::errc::file_too_large);
  return error ? std::string() : content;
}

void ReplaceWholeFile(const fs::path& path, std::string_view bytes, Access access,
                      std::error_code& error) {
  fs::path temporary = path;  // in the same folder: a rename is atomic only within a file system
  temporary += ".new";
  WriteWholeFile(temporary, bytes, access, error);
  if (error) return;
  if (access == Access::kKept) KeepPermissions(path, temporary);
  MoveInPlace(temporary, path, error);
}

}  // namespace platform
