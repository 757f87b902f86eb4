#pragma once

// What the program does when it starts, as the general options say. The start at login is in
// settings/autostart.h.

#include <string>
#include <string_view>

#include "settings/program.h"
#include "settings/settings_table.h"

namespace settings {

struct StartOptions {
  static constexpr std::string_view kSection = "System";
  static constexpr std::string_view kAutoStartService = "AutoStartService";
  static constexpr std::string_view kStartInTaskBar = "StartInTaskBar";

  void Load(const Program& program);

  /// The settings that this object holds.
  Table Describe();

  std::string autoStartService;  // a Boolean, false if it cannot be converted; the same below
  std::string startInTaskBar;    // go to the tray
};

}  // namespace settings
