#pragma once

// Parts of the program that are loaded only when they are needed.

namespace platform {

/// The address of `symbol` in the shared library `file`, which is looked for beside the program and
/// then where the system looks. Null if there is none. The library stays loaded.
void* FindInModule(const char* file, const char* symbol);

}  // namespace platform
