#pragma once

// The questions for the services' domain names.

#include <optional>
#include <string>

#include "core/service.h"
#include "settings/program.h"

class wxWindow;

namespace ui {

/// Asks for a service's domain name, proposing the one in Server.ini, and writes the answer there.
/// Returns what was written; nothing if the user cancelled or gave an empty answer. The service
/// itself and the hosts file learn of it at the next start.
std::optional<std::string> AskDomain(wxWindow* parent, const settings::Program& program,
                                     core::ServiceKind service);

}  // namespace ui
