#include "platform/shell.h"

#include <windows.h>

#include <shellapi.h>

#include "platform/windows/wide_text.h"

namespace platform {

bool OpenWithShell(const std::string& target) {
  const HINSTANCE result =
      ShellExecuteW(nullptr, L"open", WideText(target).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  constexpr INT_PTR kLargestError = 32;
  return reinterpret_cast<INT_PTR>(result) > kLargestError;
}

}  // namespace platform
