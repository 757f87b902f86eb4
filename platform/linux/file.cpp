#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/linux/descriptor.h"
#include "platform/linux/large_file.h"
#include "platform/linux/readable_size.h"

namespace platform {
namespace {

// The usual case. It saves a system call per message of a mailbox.
bool IsReadableByOwner(const struct stat& facts) {
  static const uid_t user = geteuid();
  return facts.st_uid == user && (facts.st_mode & S_IRUSR) != 0;
}

std::error_code LastError() { return {errno, std::generic_category()}; }

std::chrono::system_clock::time_point TimeOf(const timespec& time) {
  const auto sinceEpoch =
      std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
  return std::chrono::system_clock::time_point(sinceEpoch);
}

int FlagsOf(File::Mode mode) {
  switch (mode) {
    case File::Mode::kRead:
      return O_RDONLY;
    case File::Mode::kAppend:
      return O_WRONLY | O_CREAT | O_APPEND;
    case File::Mode::kUpdate:
      return O_RDWR | O_CREAT;
    case File::Mode::kReplace:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case File::Mode::kCreate:
    case File::Mode::kCreatePrivate:
      return O_WRONLY | O_CREAT | O_EXCL;
  }
  return O_RDONLY;
}

// Holds one descriptor in reserve, so that running out of descriptors can still be logged.
class SpareDescriptor {
 public:
  SpareDescriptor() { TakeBack(); }
  void TakeBack() {
    if (!descriptor_.IsOpen()) descriptor_ = Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC));
  }
  // Frees the reserve. True if there was one to free.
  bool Give() { return Descriptor(std::move(descriptor_)).IsOpen(); }

 private:
  Descriptor descriptor_;
};

SpareDescriptor& Spare() {
  static SpareDescriptor spare;
  return spare;
}

// Neither waits for a pipe or device of that name, nor takes a terminal as the controlling one.
int OpenWithoutWaiting(const char* path, File::Mode mode) {
  const int flags = FlagsOf(mode) | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  SpareDescriptor& spare = Spare();
  const mode_t permissions = mode == File::Mode::kCreatePrivate ? 0600 : 0666;
  const int descriptor = open(path, flags, permissions);
  const bool isShort = descriptor < 0 && (errno == EMFILE || errno == ENFILE);
  if (!isShort || mode != File::Mode::kAppend || !spare.Give()) return descriptor;
  return open(path, flags, permissions);
}

// It has been removed: its space is freed with the last descriptor.
bool HasNoName(const Descriptor& file) {
  struct stat facts = {};
  return fstat(file.Get(), &facts) == 0 && facts.st_nlink == 0;
}

// An error unless it is a regular file: pipes, devices and folders are refused.
std::error_code WhyNoFile(mode_t mode) {
  if (S_ISREG(mode)) return {};
  return std::make_error_code(S_ISDIR(mode) ? std::errc::is_a_directory
                                            : std::errc::operation_not_supported);
}

}  // namespace

File File::Open(const NativeString& path, Mode mode, std::error_code& error) {
  error.clear();
  const int descriptor = OpenWithoutWaiting(path.c_str(), mode);
  if (descriptor < 0) {
    error = LastError();
    return {};
  }
  File file(descriptor);
  struct stat facts = {};
  error = fstat(descriptor, &facts) != 0 ? LastError() : WhyNoFile(facts.st_mode);
  if (error) file.Close();
  file.sizeWhenOpened_ = static_cast<std::uint64_t>(facts.st_size);
  file.writtenWhenOpened_ = TimeOf(facts.st_mtim);
  return file;
}

void File::Close() {
  if (!IsOpen()) return;
  Descriptor file(static_cast<int>(std::exchange(handle_, kNone)));
  if (sizeWhenOpened_ + bytesWritten_ >= kLargeFile && HasNoName(file)) {
    CloseBeside(std::move(file));
  }
  file = {};
  Spare().TakeBack();
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

std::size_t File::ReadAt(std::uint64_t position, char* buffer, std::size_t size,
                         std::error_code& error) const {
  error.clear();
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = pread(static_cast<int>(handle_), buffer + done, size - done,
                                static_cast<off_t>(position + done));
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
    bytesWritten_ += static_cast<std::size_t>(count);
  }
}

void File::Flush(std::error_code& error) {
  error.clear();
  if (fsync(static_cast<int>(handle_)) != 0) error = LastError();
}

std::uint64_t File::ReadableSize(const NativeString& path, std::error_code& error) {
  return ReadableSizeIn(AT_FDCWD, path.c_str(), error);
}

std::uint64_t ReadableSizeIn(int folder, const char* name, std::error_code& error) {
  error.clear();
  struct stat facts = {};
  const bool readable =
      fstatat(folder, name, &facts, 0) == 0 &&
      (IsReadableByOwner(facts) || faccessat(folder, name, R_OK, AT_EACCESS) == 0);
  if (!readable) error = LastError();
  return static_cast<std::uint64_t>(facts.st_size);
}

void File::FlushFolder(const NativeString& folder, std::error_code& error) {
  error.clear();
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!descriptor.IsOpen() || fsync(descriptor.Get()) != 0) error = LastError();
}

}  // namespace platform
