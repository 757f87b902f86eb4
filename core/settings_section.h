#pragma once

// One section of Server.ini as a service's loader reads it and a dialog writes it. A number or
// Boolean that cannot be converted keeps its previous value and is told to the error log.

#include <cstdint>
#include <string>
#include <string_view>

#include "core/program.h"

namespace core {

class SettingsSection {
 public:
  SettingsSection(const Program& program, std::string_view section);

  /// Whether Server.ini exists; if not, a loader sets its defaults and reads nothing.
  bool FileExists() const;

  std::string Text(std::string_view key) const;

  /// A path in the user's own form, as a path text.
  std::string Path(std::string_view key) const;

  /// False if the value could not be converted.
  bool Read(std::string_view key, std::int16_t& value) const;
  bool Read(std::string_view key, bool& value) const;

  /// A value that cannot be written is lost without a word. Where this brings Server.ini into
  /// being, everything that is held in memory is written first (core/settings_holders.h).
  void Write(std::string_view key, std::string_view value) const;

 private:
  bool Refuse(std::string_view key, std::string_view text) const;

  const Program& program_;
  std::string file_;
  std::string section_;
};

}  // namespace core
