#pragma once

// The system's registry: an open key and its values. For Windows sources only; what the program
// uses on both systems is settings/registry.h. Every failure is an error code of the system.

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace platform {

/// An open key. It is closed with the object.
class RegistryKey {
 public:
  RegistryKey() = default;
  ~RegistryKey() { Close(); }
  RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
  RegistryKey& operator=(RegistryKey&& other) noexcept {
    std::swap(key_, other.key_);
    return *this;
  }

  /// Opens `subkey` below `root`, a predefined handle such as 0x80000001, creating it and those
  /// above it where they are missing. Not open with `error` set on failure.
  static RegistryKey Create(std::uint32_t root, std::string_view subkey, std::error_code& error);

  /// The same for a key that must exist. An empty `subkey` names the root itself.
  static RegistryKey Open(std::uint32_t root, std::string_view subkey, std::error_code& error);

  void Close();

  /// A text value, cut at its first NUL. Reading anything of a key that is not open is an error.
  std::string QueryText(std::string_view name, std::error_code& error) const;
  void SetText(std::string_view name, std::string_view value, std::error_code& error);

  /// A 32-bit value; any other value is an error.
  std::int32_t QueryNumber(std::string_view name, std::error_code& error) const;
  void SetNumber(std::string_view name, std::int32_t value, std::error_code& error);

 private:
  explicit RegistryKey(void* key) : key_(key) {}

  void* key_ = nullptr;  // an HKEY
};

}  // namespace platform
