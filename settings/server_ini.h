#pragma once

// Server.ini as a whole. There is a difference between one that is missing, which means the
// defaults, and one that is there and cannot be used: its upload folder must not fall away, which
// would open everything to everybody. The second is a fault; no service starts on it, and nothing
// is written over it.

#include <optional>
#include <system_error>

#include "settings/ini_text.h"
#include "settings/program.h"

namespace settings {

/// The file as it is now; none if it is missing, or if `fault` says why it cannot be used: the
/// system's reason, or that it is torn.
std::optional<IniText> ReadSettings(const Program& program, std::error_code& fault);

/// The fault of a file that was not written to its end, as far as that can be seen: it holds a NUL,
/// or ends within a section's or a key's name. One that is empty or lacks keys is whole.
std::error_code TornSettings();

/// Whether `bytes`, a settings file's, are torn.
bool AreTorn(std::string_view bytes);

}  // namespace settings
