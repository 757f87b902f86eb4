#pragma once

// An INI file in the per-user state directory that takes the place of a store that only Windows
// has. Only the user can read it. Several processes may write: each change is made under a lock and
// replaces the file as a whole.
//
// The format is plainer than that of the settings files (settings/ini_text.h), which people edit:
// UTF-8 with LF, a new key at the top of its section, and nothing is trimmed or a comment, so that
// every name and value that the store can hold comes back unchanged. Names ignore case.

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

  /// Sets a value, adding section and key if they are missing. A name that the file cannot hold is
  /// an error. CR and LF in the value become blanks, and it ends at a NUL.
  void Set(std::string_view section, std::string_view key, std::string_view value,
           std::error_code& error);

 private:
  std::string name_;
};

}  // namespace platform
