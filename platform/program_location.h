#pragma once

// Where this program is, and the words that it was started with.

#include <filesystem>
#include <string>

namespace platform {

/// The running executable, absolute.
std::filesystem::path ExecutablePath();

/// The sample site that an installed program has beside it, which a new program directory begins
/// with.
std::filesystem::path SampleDirectory();

/// Whether there is one.
bool IsInstalled();

/// The user's data directory, if the program is an installed one, beside which users cannot write;
/// else the executable's.
std::filesystem::path UsualProgramDirectory();

/// The program directory: what the environment variable TARNWERK_HOME names, else the usual one.
std::filesystem::path ProgramDirectory();

/// The command line behind the program's own name, as UTF-8. Windows: as the system holds it,
/// quotation marks included; Linux: the arguments joined by blanks.
std::string CommandLineText(int argumentCount, char** arguments);

/// Whether a window can be shown.
bool HasDisplay();

}  // namespace platform
