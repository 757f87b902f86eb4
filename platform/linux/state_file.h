#pragma once

// An INI file in the per-user state directory that replaces a store that exists on Windows only.
// The user alone can read it. Several processes may write: each change locks the directory and
// replaces the whole file.
//
// The format is stricter than that of the settings files (settings/ini_text.h), which people edit:
// UTF-8 with LF, new keys at the top of their section, no comments, and nothing is trimmed, so that
// every name and value of the store survives unchanged. Names ignore case.

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

class StateFile {
 public:
  /// `name`: the name of the file in the state directory. It need not exist.
  explicit StateFile(std::string_view name) : name_(name) {}

  bool HasSection(std::string_view section, std::error_code& error) const;

  /// The value, if there is such a section and key.
  std::optional<std::string> Find(std::string_view section, std::string_view key,
                                  std::error_code& error) const;

  /// Adds an empty section unless it exists.
  void AddSection(std::string_view section, std::error_code& error);

  /// Sets a value, adding section and key as needed. A name that the format cannot represent is an
  /// error. In the value, CR and LF become blanks, and a NUL ends it.
  void Set(std::string_view section, std::string_view key, std::string_view value,
           std::error_code& error);

 private:
  std::string name_;
};

}  // namespace platform
