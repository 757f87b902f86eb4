#pragma once

// Whatever a page or dialog says can be copied: texts are selected with the mouse where the system
// can do that, and texts, links and rows of lists have a menu with "copy"; what can have the focus
// reacts to Ctrl+C.

#include <functional>
#include <string>

class wxWindow;

namespace ui {

/// Lets the user copy from a control. `text`: what is copied at that moment; if it is empty, there
/// is no menu.
void LetCopy(wxWindow& control, std::function<std::string()> text);

/// The same for every text, link and list in a window.
void LetCopyTexts(wxWindow& window);

}  // namespace ui
