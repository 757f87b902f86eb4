#pragma once

// Closes modal windows of the system: message boxes, file choosers, pop-up menus. The toolkit has
// no handle on them, and a program that is asked to end must not wait for the user to answer them.

namespace platform {

/// Cancels the innermost of this thread (or answers "no"). Does nothing if there is none.
void DismissModalWindow();

}  // namespace platform
