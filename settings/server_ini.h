#pragma once

// Server.ini as a whole. A missing file means the defaults. A file that exists and cannot be used
// is a fault: falling back to the defaults would drop its upload folder and so open everything to
// everybody. No service starts on such a file, and nothing overwrites it.

#include <optional>
#include <system_error>

#include "settings/ini_text.h"
#include "settings/program.h"

namespace settings {

/// Reads the file; none if it is missing or cannot be used. `fault` then says why not: the system's
/// reason, or that the file is torn.
std::optional<IniText> ReadSettings(const Program& program, std::error_code& fault);

/// The fault of a file that was not written to its end, as far as that can be detected: it has a
/// NUL, or ends within the name of a section or key. One that is empty or lacks keys is whole.
std::error_code TornSettings();

/// Whether a settings file with that content is torn.
bool AreTorn(std::string_view bytes);

}  // namespace settings
