#pragma once

// Closing what the system itself shows modally: message boxes, file choosers, pop-up menus. The
// toolkit has no handle on these; a program that is asked to end must not wait for the user to
// answer them.

namespace platform {

/// Answers the innermost of this thread's with its refusal (cancel, no). Does nothing if there is
/// none.
void DismissModalWindow();

}  // namespace platform
