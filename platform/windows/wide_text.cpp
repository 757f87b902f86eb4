#include "platform/windows/wide_text.h"

#include <windows.h>

namespace platform {

std::wstring WideText(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  if (size == 0) return {};
  const int wideSize = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), wideSize);
  return wide;
}

std::string NarrowText(std::wstring_view wide) {
  const int wideSize = static_cast<int>(wide.size());
  if (wideSize == 0) return {};
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideSize, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideSize, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

}  // namespace platform
