#pragma once

// One section of Server.ini, for a service's loader. The file is read once, by the constructor. A
// number or Boolean that cannot be converted keeps its previous value and is reported in the error
// log.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/ini_text.h"
#include "settings/program.h"

namespace settings {

class Section {
 public:
  /// Reads the file. A fault is logged.
  Section(const Program& program, std::string_view section);

  /// Whether Server.ini exists and can be used; if it is missing, a loader sets its defaults.
  bool FileExists() const { return text_.has_value(); }

  /// Why the existing Server.ini cannot be used (settings/server_ini.h). If set, a loader changes
  /// nothing.
  const std::error_code& Fault() const { return fault_; }

  /// Empty if there is no such value.
  std::string Text(std::string_view key) const;

  /// A path in the user's own form, as a path text. One that begins with "./" or ".\" is relative
  /// to the program directory, so that settings can move with it.
  std::string Path(std::string_view key) const;

  /// False if the value could not be converted.
  bool Read(std::string_view key, std::int16_t& value) const;
  bool Read(std::string_view key, bool& value) const;

 private:
  bool Refuse(std::string_view key, std::string_view text) const;

  const Program& program_;
  std::string section_;
  std::error_code fault_;
  std::optional<IniText> text_;
};

}  // namespace settings
