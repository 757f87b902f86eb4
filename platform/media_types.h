#pragma once

// The system's own table of media types.

#include <string>
#include <string_view>

namespace platform {

/// The media type of files whose names end in "." and `ending`, which has only ASCII letters in
/// lower case and digits. Empty if the system knows none. What is returned is as the system has it,
/// and not checked. Linux: the shared MIME database, else /etc/mime.types, read at the first call
/// and bounded; Windows: the registry, read each time.
std::string MediaTypeOfEnding(std::string_view ending);

}  // namespace platform
