#pragma once

// The general options of the manager, apart from its password (core/manager_password.h) and the
// start with the system (core/autostart.h).

#include <string>
#include <string_view>

#include "core/program.h"
#include "core/settings_change.h"

namespace core {

struct StartOptions {
  bool autoStartService = false;
  bool startInTaskBar = false;  // go to the tray
};

/// What Server.ini does not say, or says unintelligibly, is false.
StartOptions ReadStartOptions(const Program& program);
void WriteStartOptions(SettingsChange& change, const StartOptions& options);

/// The operating system as the registry names it, in upper case; empty if it does not.
std::string SystemVersionText();

/// Whether a program of that system starts by itself only once it is registered as a service.
bool NeedsRegistrationAsService(std::string_view versionText);

}  // namespace core
