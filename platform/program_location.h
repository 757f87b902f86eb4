#pragma once

// The place of the program, its directories and its command line.

#include <filesystem>
#include <string>

namespace platform {

/// The absolute path of the running executable. If an update has replaced the file meanwhile, the
/// path of the new one.
std::filesystem::path ExecutablePath();

/// The sample site beside an installed program. A new program directory starts with a copy.
std::filesystem::path SampleDirectory();

/// The same beside a portable program, whose own directory starts with a copy.
std::filesystem::path PortableSampleDirectory();

/// Whether the sample site exists, as it does beside an installed program.
bool IsInstalled();

/// For an installed program the user's data directory, since nothing may be written beside the
/// executable; empty if the user has none. Else the executable's directory.
std::filesystem::path UsualProgramDirectory();

/// The program directory: TARNWERK_HOME if it is set, else the usual one.
std::filesystem::path ProgramDirectory();

/// The command line after the program's name, as UTF-8. Windows: unchanged, including quotation
/// marks; Linux: the arguments joined by blanks.
std::string CommandLineText(int argumentCount, char** arguments);

/// Whether this process, if another instance is running already, is to ask that one to start its
/// services: TARNWERK_START_RUNNING is set. Always false on Windows.
bool HandsStartOver();

/// Whether windows can be shown.
bool HasDisplay();

}  // namespace platform
