#pragma once

// A measurement that cannot go on: an exception, so that servers end and folders are removed.

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

namespace bench {

[[noreturn]] inline void Fail(const std::string& what) { throw std::runtime_error(what); }

inline void Expect(bool holds, const std::string& otherwise) {
  if (!holds) Fail(otherwise);
}

/// The body of main: runs `action`, and turns an exception into a message and exit code 1.
template <class Action>
int RunOrReport(const Action& action) {
  try {
    action();
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}

}  // namespace bench
