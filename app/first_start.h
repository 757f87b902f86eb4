#pragma once

// What a user who has just installed the program finds in his data directory.

namespace app {

/// A program directory that does not exist yet comes into being as a copy of the sample site of an
/// installed program, whole or not at all. One that exists is left as it is, whatever is missing in
/// it: the user may have deleted that.
void FillNewProgramDirectory();

}  // namespace app
