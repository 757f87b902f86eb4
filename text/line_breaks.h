#pragma once

// Breaks a text into lines as Chinese is set: between any two characters unless one of them forbids
// it, as a full stop does at the beginning of a line. Words of other scripts stay whole.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace text {

/// The lines of `text`, without the blanks around the breaks. Each `fits`, unless it is a single
/// character: a word that is longer than a line is broken anywhere.
std::vector<std::string> BrokenIntoLines(std::string_view text,
                                         const std::function<bool(const std::string&)>& fits);

}  // namespace text
