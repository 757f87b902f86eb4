#pragma once

// Explains a line of RunErr.Log to the user: when, which part of the program, and what it means.
// All such texts are made here. What is not understood is shown as it was logged.

#include <string>
#include <string_view>

namespace core {

/// All texts are printable, in one line, and short enough to show.
struct Problem {
  std::string time;  // "2026-11-15 14:30:44"; empty for a line that the program did not log
  std::string what;  // a service or another part of the program
  std::string explanation;
  std::string line;  // as it was logged; only an overlong one is cut
};

Problem Explain(std::string_view line);

}  // namespace core
