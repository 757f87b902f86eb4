#include "platform/native_path.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestPlainPath = 240;  // leaves room for a name that a callee appends
constexpr std::size_t kLongestPath = 32767;
constexpr std::size_t kMostBytesPerUnit = 3;
constexpr std::wstring_view kLongPrefix = L"\\\\?\\";

// "\\?\" turns off the normalisation of paths, so it must be done before.
std::wstring LongForm(const std::wstring& path) {
  const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  std::wstring full(size, L'\0');
  full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
  const bool share = full.starts_with(L"\\\\");
  if (full.empty() || full.starts_with(kLongPrefix)) return full;
  return share ? std::wstring(L"\\\\?\\UNC") + full.substr(1) : std::wstring(kLongPrefix) + full;
}

// What is not UTF-8 must not get the name that has the system's replacement characters.
bool IsUtf8(std::string_view text) {
  const int size = static_cast<int>(text.size());
  return size == 0 ||
         MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0) != 0;
}

}  // namespace

NativeString NativeText(std::string_view pathText) {
  const bool isTooLong = pathText.size() > kLongestPath * kMostBytesPerUnit;
  if (isTooLong || pathText.find('\0') != std::string_view::npos || !IsUtf8(pathText)) return {};
  const std::wstring wide = WideText(pathText);
  const std::wstring path = wide.size() <= kLongestPlainPath ? wide : LongForm(wide);
  return path.size() <= kLongestPath ? path : std::wstring();
}

fs::path NativePath(std::string_view pathText) { return NativeText(pathText); }

fs::path ExistingPath(std::string_view pathText) { return NativePath(pathText); }

std::string PathText(const fs::path& native) {
  std::wstring wide = native.wstring();
  if (wide.starts_with(L"\\\\?\\UNC\\")) {
    wide = L"\\\\" + wide.substr(8);
  } else if (wide.starts_with(kLongPrefix)) {
    wide = wide.substr(kLongPrefix.size());
  }
  return NarrowText(wide);
}

std::string NameTextOf(const std::wstring& name) { return NarrowText(name); }

std::string PathTextFromUser(std::string_view path) { return std::string(path); }

std::string PathTextForUser(std::string_view pathText) { return std::string(pathText); }

}  // namespace platform
