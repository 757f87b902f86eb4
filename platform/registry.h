#pragma once

// The registry: keys below four roots, each with named values that are texts or 32-bit numbers.
// Names compare without regard to case. On Windows it is the system's; on Linux the file
// registry.ini in the per-user state directory stands for it, with a section per key.
//
// Every failure is an error code of the system ("no such file" for a key or value that is missing).

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

/// The handles by which the roots have always been known.
enum class RegistryRoot : std::uint32_t {
  kClassesRoot = 0x80000000,
  kCurrentUser = 0x80000001,
  kLocalMachine = 0x80000002,
  kUsers = 0x80000003,
};

/// The root's name, "HKEY_LOCAL_MACHINE"; empty for any other number.
std::string_view NameOf(RegistryRoot root);

/// An open key. It is closed with the object.
class RegistryKey {
 public:
  RegistryKey();
  ~RegistryKey();
  RegistryKey(RegistryKey&&) noexcept;
  RegistryKey& operator=(RegistryKey&&) noexcept;

  /// Opens `subkey` (its parts separated by "\") below `root`, making it and those above it where
  /// they are missing. Not open with `error` set on failure.
  static RegistryKey Create(RegistryRoot root, std::string_view subkey, std::error_code& error);

  /// The same for a key that must exist. An empty `subkey` names the root itself.
  static RegistryKey Open(RegistryRoot root, std::string_view subkey, std::error_code& error);

  bool IsOpen() const { return system_ != nullptr; }
  void Close();

  /// A text value, cut at its first NUL. Reading anything of a key that is not open is an error.
  std::string QueryText(std::string_view name, std::error_code& error) const;
  void SetText(std::string_view name, std::string_view value, std::error_code& error);

  /// A 32-bit value. That it is something else is an error.
  std::int32_t QueryNumber(std::string_view name, std::error_code& error) const;
  void SetNumber(std::string_view name, std::int32_t value, std::error_code& error);

 private:
  struct System;
  explicit RegistryKey(std::unique_ptr<System> system);

  std::unique_ptr<System> system_;
};

}  // namespace platform
