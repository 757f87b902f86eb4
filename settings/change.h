#pragma once

// What confirming a dialog writes into Server.ini: all of its keys in one replacement of the file
// (settings/ini_change.h). Where this brings the file into being, everything that is held in memory
// is written with them (settings/holders.h).

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

  /// Why the file, though it is there, cannot be used (settings/server_ini.h). It stays as it is
  /// then, whatever Save is asked for.
  const std::error_code& Fault() const { return fault_; }

  /// Puts the changed file in the place of the old one, or says why not.
  std::error_code Save() const { return fault_ ? fault_ : change_.Save(); }

 private:
  IniChange change_;
  std::error_code fault_;
};

}  // namespace settings
