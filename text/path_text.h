#pragma once

// Path texts: Windows-style paths, joined and compared as texts only. files/files.h looks them up
// on the disk.

#include <string>
#include <string_view>

namespace ModCommon {

/// `path` with a separator at its end: if it ends, trailing blanks aside, in neither "\" nor "/",
/// the blanks are dropped and "\" is appended; otherwise it stays as it is, trailing blanks
/// included.
std::string AddSlash(std::string_view path);

}  // namespace ModCommon
