#pragma once

// What the user has decided about strangers, as section "Protection" of Server.ini has it. Without
// the section nothing is protected.

#include <string_view>

#include "settings/program.h"

namespace settings {
class Change;
}

namespace core {

struct ProtectionOptions {
  enum class Reach { kAll, kLan, kLocal };

  Reach reach = Reach::kAll;
  bool confine = false;      // clients' names stay below the roots
  bool followLinks = false;  // reading, they may leave them by a link
  bool signIn = false;       // FTP and POP3 want a mail user's name and password
  bool honest = false;       // what is acknowledged is kept, and sessions do not touch one another
  int messageLimit = 25;     // MiB; counts if `honest`

  bool operator==(const ProtectionOptions&) const = default;
};

/// The section's name.
inline constexpr std::string_view kProtectionSection = "Protection";

/// What Server.ini says. A value that it may not have counts as the stricter one, and is logged. If
/// the file cannot be used, the result is `former`.
ProtectionOptions LoadProtection(const settings::Program& program,
                                 const ProtectionOptions& former = {});

/// Adds to `change` what Server.ini does not say yet; false if it says it all. A key that is absent
/// says its default, so nothing is set by looking.
bool WriteProtection(settings::Change& change, const settings::Program& program,
                     const ProtectionOptions& options);

}  // namespace core
