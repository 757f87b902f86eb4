#pragma once

// The registry: keys below four roots, each with named values that are texts or 32-bit numbers.
// Names ignore case. On Windows it is the system's; on Linux it is the file registry.ini in the
// per-user state directory, with a section per key.
//
// Every failure is an error code of the system ("no such file" for a missing key or value).

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

/// The numbers are the system's predefined handles.
enum class RegistryRoot : std::uint32_t {
  kClassesRoot = 0x80000000,
  kCurrentUser = 0x80000001,
  kLocalMachine = 0x80000002,
  kUsers = 0x80000003,
};

/// The name of the root, like "HKEY_LOCAL_MACHINE"; empty for any other number.
std::string_view NameOf(RegistryRoot root);

/// An open key. Closed when destroyed.
class RegistryKey {
 public:
  RegistryKey();
  ~RegistryKey();
  RegistryKey(RegistryKey&&) noexcept;
  RegistryKey& operator=(RegistryKey&&) noexcept;

  /// Opens `subkey` (separated by "\") below `root`, creating it and its parents as needed. On
  /// failure the result is not open and `error` is set.
  static RegistryKey Create(RegistryRoot root, std::string_view subkey, std::error_code& error);

  /// Like Create, but the key must exist. An empty `subkey` is the root itself.
  static RegistryKey Open(RegistryRoot root, std::string_view subkey, std::error_code& error);

  bool IsOpen() const { return system_ != nullptr; }
  void Close();

  /// A text value, up to its first NUL. Access to a key that is not open is an error.
  std::string QueryText(std::string_view name, std::error_code& error) const;
  void SetText(std::string_view name, std::string_view value, std::error_code& error);

  /// A 32-bit value. A value of any other type is an error.
  std::int32_t QueryNumber(std::string_view name, std::error_code& error) const;
  void SetNumber(std::string_view name, std::int32_t value, std::error_code& error);

 private:
  struct System;
  explicit RegistryKey(std::unique_ptr<System> system);

  std::unique_ptr<System> system_;
};

}  // namespace platform
