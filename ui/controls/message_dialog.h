#pragma once

// The system's message box, or the toolkit's own where the system's shows no icon.

#include <wx/msgdlg.h>

#include <memory>

namespace ui {

/// `style`: the toolkit's flags for buttons and icon.
std::unique_ptr<wxMessageDialogBase> MakeMessageDialog(wxWindow* parent, const wxString& text,
                                                       const wxString& title, long style);

}  // namespace ui
