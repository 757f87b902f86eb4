#include "platform/windows/registry.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

std::error_code SystemError(LSTATUS status) {
  return {static_cast<int>(status), std::system_category()};
}

HKEY NativeRoot(std::uint32_t root) {
  // The predefined handles are sign-extended 32-bit numbers.
  return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(root)));
}

HKEY Native(void* key) { return static_cast<HKEY>(key); }

constexpr DWORD kTextTypes = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;

}  // namespace

// MAXIMUM_ALLOWED: reading must not require the right to write.
RegistryKey RegistryKey::Create(std::uint32_t root, std::string_view subkey,
                                std::error_code& error) {
  HKEY key = nullptr;
  error = SystemError(RegCreateKeyExW(NativeRoot(root), WideText(subkey).c_str(), 0, nullptr, 0,
                                      MAXIMUM_ALLOWED, nullptr, &key, nullptr));
  return error ? RegistryKey() : RegistryKey(key);
}

RegistryKey RegistryKey::Open(std::uint32_t root, std::string_view subkey, std::error_code& error) {
  HKEY key = nullptr;
  error = SystemError(
      RegOpenKeyExW(NativeRoot(root), WideText(subkey).c_str(), 0, MAXIMUM_ALLOWED, &key));
  return error ? RegistryKey() : RegistryKey(key);
}

void RegistryKey::Close() {
  if (key_ != nullptr) RegCloseKey(Native(key_));
  key_ = nullptr;
}

std::string RegistryKey::QueryText(std::string_view name, std::error_code& error) const {
  error = SystemError(ERROR_INVALID_HANDLE);
  if (key_ == nullptr) return {};
  const std::wstring wideName = WideText(name);
  std::wstring value;
  DWORD size = 0;
  LSTATUS status =
      RegGetValueW(Native(key_), nullptr, wideName.c_str(), kTextTypes, nullptr, nullptr, &size);
  while (status == ERROR_SUCCESS) {
    value.resize(size / sizeof(wchar_t));
    status = RegGetValueW(Native(key_), nullptr, wideName.c_str(), kTextTypes, nullptr,
                          value.data(), &size);
    if (status != ERROR_MORE_DATA) break;  // else it has grown since
    status = ERROR_SUCCESS;
  }
  error = SystemError(status);
  return error ? std::string() : NarrowText(value.substr(0, value.find(L'\0')));
}

void RegistryKey::SetText(std::string_view name, std::string_view value, std::error_code& error) {
  error = SystemError(ERROR_INVALID_HANDLE);
  if (key_ == nullptr) return;
  const std::wstring wide = WideText(value.substr(0, value.find('\0')));
  const auto size = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
  error = SystemError(RegSetValueExW(Native(key_), WideText(name).c_str(), 0, REG_SZ,
                                     reinterpret_cast<const BYTE*>(wide.c_str()), size));
}

std::int32_t RegistryKey::QueryNumber(std::string_view name, std::error_code& error) const {
  error = SystemError(ERROR_INVALID_HANDLE);
  if (key_ == nullptr) return 0;
  std::int32_t value = 0;
  DWORD size = sizeof(value);
  error = SystemError(RegGetValueW(Native(key_), nullptr, WideText(name).c_str(), RRF_RT_DWORD,
                                   nullptr, &value, &size));
  return error ? 0 : value;
}

void RegistryKey::SetNumber(std::string_view name, std::int32_t value, std::error_code& error) {
  error = SystemError(ERROR_INVALID_HANDLE);
  if (key_ == nullptr) return;
  error = SystemError(RegSetValueExW(Native(key_), WideText(name).c_str(), 0, REG_DWORD,
                                     reinterpret_cast<const BYTE*>(&value), sizeof(value)));
}

}  // namespace platform
