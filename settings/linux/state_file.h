#pragma once

// An INI file in the per-user state directory that replaces a store that exists on Windows only.
// The user alone can read it. Several processes may write: each change locks the directory and
// replaces the whole file. A file that cannot be read is never replaced.
//
// The format is that of settings/ini_text.h, always in UTF-8. Values come back as they were set;
// names ignore case.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/ini_text.h"

namespace settings {

class StateFile {
 public:
  /// `name`: the name of the file in the state directory. It need not exist.
  explicit StateFile(std::string_view name) : name_(name) {}

  bool HasSection(std::string_view section, std::error_code& error) const;

  /// The value, if there is such a section and key.
  std::optional<std::string> Find(std::string_view section, std::string_view key,
                                  std::error_code& error) const;

  /// Adds an empty section if it is missing.
  std::error_code AddSection(std::string_view section);

  /// Sets a value, adding section and key if they are missing. A name that an INI file cannot hold
  /// unchanged is an error. CR and LF in the value become blanks, and it ends at a NUL.
  std::error_code Set(std::string_view section, std::string_view key, std::string_view value);

 private:
  std::error_code Change(const std::function<void(IniText&)>& change);

  std::string name_;
};

}  // namespace settings
