#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace platform {
namespace {

// The usual case, which spares asking the system once more for every message of a mailbox.
bool IsReadableByOwner(const struct stat& facts) {
  static const uid_t user = geteuid();
  return facts.st_uid == user && (facts.st_mode & S_IRUSR) != 0;
}

std::error_code LastError() { return {errno, std::generic_category()}; }

int FlagsOf(File::Mode mode) {
  switch (mode) {
    case File::Mode::kRead:
      return O_RDONLY | O_NONBLOCK;  // a pipe of that name must not hold up the program
    case File::Mode::kAppend:
      return O_WRONLY | O_CREAT | O_APPEND;
    case File::Mode::kUpdate:
      return O_RDWR | O_CREAT;
    case File::Mode::kReplace:
      return O_WRONLY | O_CREAT | O_TRUNC;
  }
  return O_RDONLY;
}

}  // namespace

File File::Open(const std::filesystem::path& path, Mode mode, std::error_code& error) {
  error.clear();
  const int descriptor = open(path.c_str(), FlagsOf(mode) | O_CLOEXEC, 0666);
  if (descriptor < 0) {
    error = LastError();
    return {};
  }
  File file(descriptor);
  if (mode != Mode::kRead) return file;
  struct stat facts = {};
  if (fstat(descriptor, &facts) != 0) {
    error = LastError();
    file.Close();
  } else if (S_ISDIR(facts.st_mode)) {
    error = std::make_error_code(std::errc::is_a_directory);
    file.Close();
  }
  file.sizeWhenOpened_ = static_cast<std::uint64_t>(facts.st_size);
  return file;
}

void File::Close() {
  if (!IsOpen()) return;
  close(static_cast<int>(handle_));
  handle_ = kNone;
}

std::uint64_t File::Size(std::error_code& error) const {
  struct stat facts = {};
  error.clear();
  if (fstat(static_cast<int>(handle_), &facts) != 0) error = LastError();
  return static_cast<std::uint64_t>(facts.st_size);
}

void File::Skip(std::uint64_t bytes, std::error_code& error) {
  error.clear();
  if (lseek(static_cast<int>(handle_), static_cast<off_t>(bytes), SEEK_CUR) < 0)
    error = LastError();
}

void File::Seek(std::uint64_t position, std::error_code& error) {
  error.clear();
  if (lseek(static_cast<int>(handle_), static_cast<off_t>(position), SEEK_SET) < 0)
    error = LastError();
}

std::size_t File::Read(char* buffer, std::size_t size, std::error_code& error) {
  error.clear();
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = read(static_cast<int>(handle_), buffer + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) error = LastError();
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

void File::Write(std::string_view bytes, std::error_code& error) {
  error.clear();
  while (!bytes.empty()) {
    const ssize_t count = write(static_cast<int>(handle_), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      error = LastError();
      return;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void File::Flush(std::error_code& error) {
  error.clear();
  if (fsync(static_cast<int>(handle_)) != 0) error = LastError();
}

std::uint64_t File::ReadableSize(const std::filesystem::path& path, std::error_code& error) {
  error.clear();
  struct stat facts = {};
  const bool readable =
      stat(path.c_str(), &facts) == 0 &&
      (IsReadableByOwner(facts) || faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0);
  if (!readable) error = LastError();
  return static_cast<std::uint64_t>(facts.st_size);
}

void File::FlushFolder(const std::filesystem::path& folder, std::error_code& error) {
  error.clear();
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0 || fsync(descriptor) != 0) error = LastError();
  if (descriptor >= 0) close(descriptor);
}

}  // namespace platform
