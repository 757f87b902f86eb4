#pragma once

// Splitting the command line into words.

#include <string>
#include <string_view>
#include <vector>

namespace ModMain {

/// Splits `text` at blanks, tabs and "/" only. Element 0 of the result is empty; the first word is
/// element 1. Words after the first `most` are dropped.
std::vector<std::string> GetCommandLineWords(std::string_view text, int most = 10);

}  // namespace ModMain
