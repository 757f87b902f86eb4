#pragma once

// What the program does when it starts, as the general options say. The start at login is in
// settings/autostart.h.

#include "settings/change.h"
#include "settings/program.h"

namespace settings {

struct StartOptions {
  bool autoStartService = false;
  bool startInTaskBar = false;  // go to the tray
};

/// A value that is missing from Server.ini or is not a Boolean is false.
StartOptions ReadStartOptions(const Program& program);
void WriteStartOptions(Change& change, const StartOptions& options);

}  // namespace settings
