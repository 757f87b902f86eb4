#pragma once

// How far strangers are trusted, as texts for the user.

#include <cstdint>
#include <string>

#include "core/protection_options.h"

namespace core {

/// Like "保护：部分开启，已拒绝 12 次". It is on once all four are: the reach is limited, names are
/// confined, clients sign in, answers are honest.
std::string ProtectionText(const ProtectionOptions& options, std::uint64_t refusedClients);

/// What is on, like "局域网、只限主目录"; empty if nothing is.
std::string ProtectionParts(const ProtectionOptions& options);

}  // namespace core
