#include "platform/standard_streams.h"

#include <windows.h>

#include <string>

namespace platform {
namespace {

bool Write(HANDLE output, const std::string& bytes) {
  DWORD written = 0;
  return WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0;
}

}  // namespace

void SayOnStandardError(std::string_view line) {
  const std::string bytes = std::string(line) + "\r\n";
  const HANDLE given = GetStdHandle(STD_ERROR_HANDLE);
  if (given != nullptr && given != INVALID_HANDLE_VALUE && Write(given, bytes)) return;
  if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
  const HANDLE console =
      CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (console != INVALID_HANDLE_VALUE) {
    Write(console, bytes);
    CloseHandle(console);
  }
  FreeConsole();
}

void SecureStandardStreams() {}

}  // namespace platform
