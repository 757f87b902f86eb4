#pragma once

// Finding a name in a folder without regard to case. The system cannot do that, so the folder is
// read, and what was read is kept: a client that asks for many names that are not there must not
// have the folder read for each of them.
//
// An answer holds for the folder as it is. Only of a folder with very many entries that changes
// right now may it be up to 10 microseconds per entry old; and in one with more than 200,000
// entries nothing is found.

#include <optional>
#include <string>

namespace platform {

/// The name in the open folder that is `name` but for its case; of several the first by its bytes.
/// `folder`: a descriptor, which may be one that only names the folder (O_PATH).
std::optional<std::string> FindIgnoringCase(int folder, const std::string& name);

}  // namespace platform
