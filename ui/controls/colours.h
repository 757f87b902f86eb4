#pragma once

// The few colours that are not the toolkit's own. They are mixed from the desktop's, so that they
// fit light and dark themes.

#include <wx/colour.h>

namespace ui {

/// Whether the desktop shows light texts on dark windows.
bool IsDark();

wxColour CardColour();    // the surface of a card, set off from the window's
wxColour BorderColour();  // the thin line round a card
wxColour SideBarColour();
wxColour QuietText();     // text of second rank
wxColour RunningText();   // says that something runs
wxColour FailedText();    // says that something did not work
wxColour AccentColour();  // the selected entry

/// `share` of `first`, the rest of `second`; a share is between 0 and 1.
wxColour Mixed(const wxColour& first, const wxColour& second, double share);

}  // namespace ui
