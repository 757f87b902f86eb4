#pragma once

// An open file. Owns the system's handle, which child processes do not inherit. Calls block only
// for as long as the disk takes: anything but a regular file (a folder, a pipe, a device) cannot be
// opened. Failures are error codes with the system's message.

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace platform {

class File {
 public:
  enum class Mode {
    kRead,           // must exist
    kAppend,         // created if missing, every write goes to the end
    kUpdate,         // created if missing, not truncated, writing starts at the first byte
    kReplace,        // created or emptied
    kCreatePrivate,  // must not exist; on Linux only the user can open it
  };

  File() = default;
  File(File&& other) noexcept
      : handle_(std::exchange(other.handle_, kNone)), sizeWhenOpened_(other.sizeWhenOpened_) {}
  File& operator=(File&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(sizeWhenOpened_, other.sizeWhenOpened_);
    return *this;
  }
  ~File() { Close(); }

  /// Opens `path`; on failure the result is not open and `error` says why.
  static File Open(const std::filesystem::path& path, Mode mode, std::error_code& error);

  bool IsOpen() const { return handle_ != kNone; }
  void Close();

  std::uint64_t Size(std::error_code& error) const;

  /// The size at the time of opening, for a file opened with kRead; costs nothing.
  std::uint64_t SizeWhenOpened() const { return sizeWhenOpened_; }

  /// Moves the current position of a file opened for reading forward.
  void Skip(std::uint64_t bytes, std::error_code& error);

  /// Makes `position`, counted from the first byte, the current one of a file opened for reading.
  void Seek(std::uint64_t position, std::error_code& error);

  /// Reads up to `size` bytes from the current position; fewer only at the end of the file.
  std::size_t Read(char* buffer, std::size_t size, std::error_code& error);

  /// Writes all of `bytes` or fails.
  void Write(std::string_view bytes, std::error_code& error);

  /// Returns once what was written would survive a power cut.
  void Flush(std::error_code& error);

  /// The size of a file that can be opened for reading; far cheaper than opening it.
  static std::uint64_t ReadableSize(const std::filesystem::path& path, std::error_code& error);

  /// Returns once the names in `folder` would survive a power cut: a new file is safe only when it
  /// and its folder are flushed. On Windows the file's own flush includes its name.
  static void FlushFolder(const std::filesystem::path& folder, std::error_code& error);

 private:
  // A file descriptor or a HANDLE; both systems say "none" by minus one.
  using Handle = std::intptr_t;
  static constexpr Handle kNone = -1;

  explicit File(Handle handle) : handle_(handle) {}

  Handle handle_ = kNone;
  std::uint64_t sizeWhenOpened_ = 0;
};

}  // namespace platform
