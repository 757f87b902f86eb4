#include "platform/system_message.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace platform {

std::string SystemMessage(const std::error_code& error) {
  if (error.category() != std::system_category()) return error.message();
  wchar_t* buffer = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, static_cast<DWORD>(error.value()), 0, reinterpret_cast<wchar_t*>(&buffer), 0,
      nullptr);
  std::wstring text(buffer == nullptr ? L"" : buffer, length);
  LocalFree(buffer);
  // The system's messages end in a line break.
  while (!text.empty() && text.back() <= L' ') text.pop_back();
  return text.empty() ? error.message() : NarrowText(text);
}

}  // namespace platform
