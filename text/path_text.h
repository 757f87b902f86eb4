#pragma once

// Path texts: Windows-style paths, joined and compared as texts only. files/files.h looks them up
// on the disk.

#include <string>
#include <string_view>

namespace ModCommon {

/// `path` with a trailing separator. If `path`, ignoring trailing blanks, ends in neither "\" nor
/// "/", the blanks are removed and "\" is appended; otherwise it is returned unchanged, trailing
/// blanks included.
std::string AddSlash(std::string_view path);

}  // namespace ModCommon
