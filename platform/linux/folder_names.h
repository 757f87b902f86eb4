#pragma once

// Case-insensitive lookup of a name in a folder. The system cannot do that, so the folder is read
// and its names are cached: a client that asks for many missing names must not cause a read for
// each.
//
// Answers are current, with two exceptions: in a very large folder that is being changed an answer
// may be up to 10 microseconds per entry old, and in a folder with more than 200,000 entries
// nothing is found.

#include <optional>
#include <string>

namespace platform {

/// The name in the open folder that equals `name` except for case; if there are several, the first
/// in byte order. `folder`: a descriptor, which may be opened with O_PATH.
std::optional<std::string> FindIgnoringCase(int folder, const std::string& name);

}  // namespace platform
