#pragma once

// An open regular file. Owns the system's handle, which child processes do not inherit. Anything
// else (a folder, a pipe, a device) fails to open, so calls block only for as long as the disk
// takes. Failures are error codes with the system's message.

#include <chrono>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/native_path.h"

namespace platform {

class File {
 public:
  enum class Mode {
    kRead,           // must exist
    kAppend,         // created if missing; every write goes to the end
    kUpdate,         // created if missing, not truncated; writing starts at the first byte
    kReplace,        // created or truncated
    kCreate,         // must not exist, not even as a link
    kCreatePrivate,  // must not exist; on Linux only the user can open it
  };

  File() = default;
  File(File&& other) noexcept
      : handle_(std::exchange(other.handle_, kNone)),
        sizeWhenOpened_(other.sizeWhenOpened_),
        bytesWritten_(other.bytesWritten_),
        writtenWhenOpened_(other.writtenWhenOpened_) {}
  File& operator=(File&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(sizeWhenOpened_, other.sizeWhenOpened_);
    std::swap(bytesWritten_, other.bytesWritten_);
    std::swap(writtenWhenOpened_, other.writtenWhenOpened_);
    return *this;
  }
  ~File() { Close(); }

  /// Opens `path`. On failure the result is not open and `error` is set.
  static File Open(const NativeString& path, Mode mode, std::error_code& error);

  bool IsOpen() const { return handle_ != kNone; }
  void Close();

  std::uint64_t Size(std::error_code& error) const;

  /// The size when the file was opened with kRead. Costs no system call.
  std::uint64_t SizeWhenOpened() const { return sizeWhenOpened_; }

  /// When the file was last written to, as of then, likewise.
  std::chrono::system_clock::time_point WrittenWhenOpened() const { return writtenWhenOpened_; }

  /// Advances the position of a file opened for reading.
  void Skip(std::uint64_t bytes, std::error_code& error);

  /// Sets the position of a file opened for reading to `position` bytes from its start.
  void Seek(std::uint64_t position, std::error_code& error);

  /// Reads up to `size` bytes; fewer only at the end of the file.
  std::size_t Read(char* buffer, std::size_t size, std::error_code& error);

  /// The same from `position` on, which leaves the file's position alone on Linux and moves it
  /// behind what was read on Windows. Nothing beyond the end is not an error.
  std::size_t ReadAt(std::uint64_t position, char* buffer, std::size_t size,
                     std::error_code& error) const;

  /// Writes all of `bytes` or fails.
  void Write(std::string_view bytes, std::error_code& error);

  /// Returns once the written data would survive a power failure.
  void Flush(std::error_code& error);

  /// The size of a file that can be opened for reading. Far cheaper than opening it.
  static std::uint64_t ReadableSize(const NativeString& path, std::error_code& error);

  /// Returns once the names in `folder` would survive a power failure: a new file is safe only
  /// after both it and its folder are flushed. Does nothing on Windows, where flushing a file
  /// includes its name.
  static void FlushFolder(const NativeString& folder, std::error_code& error);

  /// A file descriptor or a HANDLE, for platform/ only.
  using Handle = std::intptr_t;
  Handle Native() const { return handle_; }

 private:
  // -1 means none on both systems.
  static constexpr Handle kNone = -1;

  explicit File(Handle handle) : handle_(handle) {}

  Handle handle_ = kNone;
  std::uint64_t sizeWhenOpened_ = 0;
  std::uint64_t bytesWritten_ = 0;
  std::chrono::system_clock::time_point writtenWhenOpened_ = {};
};

}  // namespace platform
