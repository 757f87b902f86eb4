#pragma once

class wxTextCtrl;

namespace ui {

/// Shows the text of a password field, or dots again.
void ShowPassword(wxTextCtrl& field, bool shown);

}  // namespace ui
