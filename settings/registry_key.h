#pragma once

// The keys of the registry (settings/registry.h): below four roots, each with named values that are
// texts or 32-bit numbers. Names ignore case. On Windows the registry is the system's; on Linux the
// file registry.ini in the per-user state directory, with a section per key.
//
// Every failure is an error code of the system ("no such file" for a key or value that is missing).

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace Modreg {

/// The handles by which the roots have always been known.
enum class Root : std::uint32_t {
  kClassesRoot = 0x80000000,
  kCurrentUser = 0x80000001,
  kLocalMachine = 0x80000002,
  kUsers = 0x80000003,
};

/// An open key, closed with the object. Reading or writing values of one that is not open is an
/// error. One that was moved from can only be assigned to or destroyed.
class Key {
 public:
  Key();  // not open
  ~Key();
  Key(Key&&) noexcept;
  Key& operator=(Key&&) noexcept;

  /// Opens `subkey` (its parts separated by "\") below `root`, creating it and those above it where
  /// they are missing. Not open with `error` set on failure.
  static Key Create(Root root, std::string_view subkey, std::error_code& error);

  /// The same for a key that must exist. An empty `subkey` names the root itself.
  static Key Open(Root root, std::string_view subkey, std::error_code& error);

  void Close();

  /// A text value, cut at its first NUL.
  std::string QueryText(std::string_view name, std::error_code& error) const;
  void SetText(std::string_view name, std::string_view value, std::error_code& error);

  /// A 32-bit value; any other value is an error.
  std::int32_t QueryNumber(std::string_view name, std::error_code& error) const;
  void SetNumber(std::string_view name, std::int32_t value, std::error_code& error);

 private:
  struct System;

  std::unique_ptr<System> system_;
};

}  // namespace Modreg
