#pragma once

// Names that only one text stands for.

#include <string_view>

namespace platform {

/// Whether the system takes `name`, of an entry in a folder and neither "." nor "..", just as it is
/// written, but for its case. Windows drops dots and blanks at the end, so that ".. " may lead up
/// and "x." means "x", and takes what follows a colon for a part of a file.
bool IsPlainName(std::string_view name);

}  // namespace platform
