#pragma once

// The change that confirming a dialog makes to Server.ini: all of its keys are written in one
// replacement of the file (settings/ini_change.h). If this creates the file, all settings held in
// memory are written with them (settings/holders.h).

#include <string_view>
#include <system_error>

#include "settings/ini_change.h"
#include "settings/program.h"

namespace settings {

/// One section of a change.
class SectionChange {
 public:
  SectionChange(IniChange& change, std::string_view section) : change_(change), section_(section) {}

  void Write(std::string_view key, std::string_view value) const {
    change_.Set(section_, key, value);
  }

 private:
  IniChange& change_;
  std::string_view section_;
};

class Change {
 public:
  explicit Change(const Program& program);

  /// `section`: a constant.
  SectionChange In(std::string_view section) { return {change_, section}; }

  /// Why the existing file cannot be used (settings/server_ini.h). If set, Save fails with it and
  /// leaves the file alone.
  const std::error_code& Fault() const { return fault_; }

  /// Replaces the file with the changed one; the error says why that failed.
  std::error_code Save() const { return fault_ ? fault_ : change_.Save(); }

 private:
  IniChange change_;
  std::error_code fault_;
};

}  // namespace settings
