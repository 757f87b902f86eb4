#include "platform/text_case.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace platform {

std::string UpperCase(std::string_view text) {
  // Bytes that are not UTF-8 would not survive the conversion to UTF-16.
  const int size = static_cast<int>(text.size());
  if (size == 0) return {};
  if (MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0) == 0) {
    std::string upper(text);
    for (char& c : upper) {
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return upper;
  }
  std::wstring wide = WideText(text);
  CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  return NarrowText(wide);
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  return left == right || UpperCase(left) == UpperCase(right);
}

}  // namespace platform
