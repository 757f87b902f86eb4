#pragma once

// Message boxes. Their buttons are in the program's language, whatever the system's.

#include <string>

class wxWindow;

namespace ui {

/// The default title.
inline constexpr const char* kProgramTitle = "Tarnwerk";

/// Shows a box and returns the identifier of the button that closed it. `style`: the toolkit's
/// flags for buttons and icon.
int ShowMessage(wxWindow* parent, const std::string& text, const char* title, long style);

/// Shows a warning with an OK button.
void Warn(wxWindow* parent, const std::string& text, const char* title = kProgramTitle);

/// Asks a question. True for Yes; No is the default button.
bool Confirm(wxWindow* parent, const std::string& text, const char* title = kProgramTitle);

}  // namespace ui
