#pragma once

#include <string_view>

namespace text {

/// Whether a file name matches a pattern as on Windows: "*" is any run of characters, "?" is one
/// character (not byte), case is ignored, and "*.*" also matches names without a dot.
bool MatchesWildcard(std::string_view name, std::string_view pattern);

}  // namespace text
