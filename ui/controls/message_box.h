#pragma once

// Message boxes, with button texts in the language of the program whatever the system's is.

#include <string>

class wxWindow;

namespace ui {

/// The title of boxes that have none of their own.
inline constexpr const char* kProgramTitle = "Tarnwerk";

/// Shows a box and returns the identifier of the button that closed it. `style`: the toolkit's
/// buttons and icons.
int ShowMessage(wxWindow* parent, const std::string& text, const char* title, long style);

/// A box with an exclamation icon and an OK button.
void Warn(wxWindow* parent, const std::string& text, const char* title = kProgramTitle);

/// A question to be answered by Yes or No; Enter says No.
bool Confirm(wxWindow* parent, const std::string& text, const char* title = kProgramTitle);

}  // namespace ui
