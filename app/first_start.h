#pragma once

// The initial content of the program directory of an installed program.

namespace app {

/// Creates a missing program directory as a copy of the installed sample site, completely or not at
/// all. An existing directory is left alone, even if something is missing: the user may have
/// deleted it.
void FillNewProgramDirectory();

}  // namespace app
