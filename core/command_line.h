#pragma once

// The words of the command line.

#include <string>
#include <string_view>
#include <vector>

namespace ModMain {

/// Splits `text` at blanks, tabs and "/" alone. Element 0 of the result is unused and empty, word 1
/// is element 1; words beyond `most` are dropped.
std::vector<std::string> GetCommandLineWords(std::string_view text, int most = 10);

}  // namespace ModMain
