#pragma once

// What the program prints instead of running: "--help" and "--version", each as the only word.

#include <optional>
#include <string>
#include <string_view>

namespace ModMain {

/// The lines that `commandLine` asks for, without the last line break. None if it asks for none.
std::optional<std::string> RequestedText(std::string_view commandLine);

}  // namespace ModMain
