#pragma once

// Paths as texts. They are Windows-style, and are joined and compared as texts only; what they name
// on the disk is asked in core/files.h.

#include <string>
#include <string_view>

namespace ModCommon {

/// `path` with a separator at its end: if it ends, trailing blanks aside, in neither "\" nor "/",
/// the blanks are dropped and "\" is appended; otherwise it stays as it is, trailing blanks
/// included.
std::string AddSlash(std::string_view path);

}  // namespace ModCommon

namespace core {

/// `text` without the blanks at both ends (blanks only, as everywhere in our file formats).
std::string_view TrimBlanks(std::string_view text);
std::string_view TrimTrailingBlanks(std::string_view text);

/// `text` with every `from` replaced by `to`.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

}  // namespace core
