#pragma once

// An INI file in the per-user state directory that stands for a store of the system's. The user
// alone can read it. Sections and keys compare without regard to case; a value is everything behind
// its "=", blanks included. Several processes may write: each change is made under a lock and
// replaces the file as a whole.

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

class StateFile {
 public:
  /// `name`: the file's name in the state directory. It need not exist.
  explicit StateFile(std::string_view name) : name_(name) {}

  bool HasSection(std::string_view section, std::error_code& error) const;

  /// None if there is no such section or key.
  std::optional<std::string> Find(std::string_view section, std::string_view key,
                                  std::error_code& error) const;

  /// Adds an empty section if it is missing.
  void AddSection(std::string_view section, std::error_code& error);

  /// Sets a value, adding section and key where they are missing. A name that the file cannot hold
  /// is an error; a line break in the value becomes a blank, and with a NUL it ends.
  void Set(std::string_view section, std::string_view key, std::string_view value,
           std::error_code& error);

 private:
  std::string name_;
};

}  // namespace platform
