#pragma once

// The access keys of every window and dialog: Alt and the letter press a button, tick a box, choose
// an option or move into the field behind a label, wherever in the window the focus is.

namespace ui {

/// For the whole program, from now on.
void ServeAccessKeys();

}  // namespace ui
