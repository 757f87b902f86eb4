#include "platform/file.h"

#include <windows.h>

#include <algorithm>

#include "platform/windows/file_time.h"

namespace platform {
namespace {

constexpr std::size_t kLargestTransfer = 1U << 20;

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

HANDLE Pointer(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::chrono::system_clock::time_point WriteTimeOf(HANDLE file) {
  FILETIME written = {};
  GetFileTime(file, nullptr, nullptr, &written);
  return TimeOf(written);
}

DWORD AccessOf(File::Mode mode) {
  switch (mode) {
    case File::Mode::kRead:
      return GENERIC_READ;
    case File::Mode::kAppend:
      return FILE_APPEND_DATA | SYNCHRONIZE;
    case File::Mode::kUpdate:
      return GENERIC_READ | GENERIC_WRITE;
    case File::Mode::kReplace:
    case File::Mode::kCreate:
    case File::Mode::kCreatePrivate:
      return GENERIC_WRITE;
  }
  return GENERIC_READ;
}

DWORD CreationOf(File::Mode mode) {
  switch (mode) {
    case File::Mode::kRead:
      return OPEN_EXISTING;
    case File::Mode::kAppend:
    case File::Mode::kUpdate:
      return OPEN_ALWAYS;
    case File::Mode::kReplace:
      return CREATE_ALWAYS;
    case File::Mode::kCreate:
    case File::Mode::kCreatePrivate:
      return CREATE_NEW;
  }
  return OPEN_EXISTING;
}

}  // namespace

File File::Open(const NativeString& path, Mode mode, std::error_code& error) {
  error.clear();
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE handle = CreateFileW(path.c_str(), AccessOf(mode), share, nullptr, CreationOf(mode),
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    error = LastError();
    return {};
  }
  File file(reinterpret_cast<std::intptr_t>(handle));
  // A name like "com1" opens a device in every folder.
  if (GetFileType(handle) != FILE_TYPE_DISK) {
    error.assign(ERROR_FILE_NOT_FOUND, std::system_category());
    file.Close();
    return file;
  }
  if (mode == Mode::kRead) {
    file.sizeWhenOpened_ = file.Size(error);
    file.writtenWhenOpened_ = WriteTimeOf(handle);
  }
  return file;
}

void File::Close() {
  if (!IsOpen()) return;
  CloseHandle(Pointer(handle_));
  handle_ = kNone;
}

std::uint64_t File::Size(std::error_code& error) const {
  LARGE_INTEGER size = {};
  error.clear();
  if (GetFileSizeEx(Pointer(handle_), &size) == 0) error = LastError();
  return static_cast<std::uint64_t>(size.QuadPart);
}

void File::Skip(std::uint64_t bytes, std::error_code& error) {
  LARGE_INTEGER distance = {};
  distance.QuadPart = static_cast<LONGLONG>(bytes);
  error.clear();
  if (SetFilePointerEx(Pointer(handle_), distance, nullptr, FILE_CURRENT) == 0) error = LastError();
}

void File::Seek(std::uint64_t position, std::error_code& error) {
  LARGE_INTEGER distance = {};
  distance.QuadPart = static_cast<LONGLONG>(position);
  error.clear();
  if (SetFilePointerEx(Pointer(handle_), distance, nullptr, FILE_BEGIN) == 0) error = LastError();
}

std::size_t File::Read(char* buffer, std::size_t size, std::error_code& error) {
  error.clear();
  std::size_t done = 0;
  while (done < size) {
    const auto wanted = static_cast<DWORD>(std::min(size - done, kLargestTransfer));
    DWORD count = 0;
    const bool read = ReadFile(Pointer(handle_), buffer + done, wanted, &count, nullptr) != 0;
    if (!read) error = LastError();
    if (!read || count == 0) break;
    done += count;
  }
  return done;
}

std::size_t File::ReadAt(std::uint64_t position, char* buffer, std::size_t size,
                         std::error_code& error) const {
  error.clear();
  std::size_t done = 0;
  while (done < size) {
    const std::uint64_t from = position + done;
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(from);
    place.OffsetHigh = static_cast<DWORD>(from >> 32U);
    const auto wanted = static_cast<DWORD>(std::min(size - done, kLargestTransfer));
    DWORD count = 0;
    const bool read = ReadFile(Pointer(handle_), buffer + done, wanted, &count, &place) != 0;
    if (!read && GetLastError() != ERROR_HANDLE_EOF) error = LastError();
    if (!read || count == 0) break;
    done += count;
  }
  return done;
}

void File::Write(std::string_view bytes, std::error_code& error) {
  error.clear();
  while (!bytes.empty()) {
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kLargestTransfer));
    DWORD count = 0;
    if (WriteFile(Pointer(handle_), bytes.data(), wanted, &count, nullptr) == 0) {
      error = LastError();
      return;
    }
    bytes.remove_prefix(count);
  }
}

void File::Flush(std::error_code& error) {
  error.clear();
  if (FlushFileBuffers(Pointer(handle_)) == 0) error = LastError();
}

std::uint64_t File::ReadableSize(const NativeString& path, std::error_code& error) {
  const File file = Open(path, Mode::kRead, error);
  return file.IsOpen() ? file.Size(error) : 0;
}

void File::FlushFolder(const NativeString&, std::error_code& error) { error.clear(); }

}  // namespace platform
