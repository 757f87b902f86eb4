#pragma once

// The initial content of the program directory of an installed or portable program.

namespace app {

/// Puts the sample site into the program directory if it is new: for an installed program if it is
/// missing, for a portable one if nothing that the sample would bring is beside it. All of it or
/// nothing is put there. Its settings let only the local network connect, and names do not lead out
/// of what is shared (core/protection.h). Otherwise the directory is left alone, even if something
/// is missing: the user may have deleted it.
void FillNewProgramDirectory();

}  // namespace app
