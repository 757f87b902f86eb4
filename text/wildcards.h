#pragma once

#include <string_view>

namespace text {

/// Whether a file's name matches a pattern as on Windows: "*" is any run of characters, "?" one
/// character (not byte), case does not count, and "*.*" takes names without a dot too.
bool MatchesWildcard(std::string_view name, std::string_view pattern);

}  // namespace text
