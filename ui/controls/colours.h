#pragma once

// The few colours that are not the toolkit's. They are mixed from the desktop's, so that they fit
// light and dark themes.

#include <wx/colour.h>

namespace ui {

/// Whether the desktop has light text on dark windows.
bool IsDark();

wxColour CardColour();    // the background of a card
wxColour BorderColour();  // the thin border of a card
wxColour SideBarColour();
wxColour QuietText();     // less important text
wxColour LinkText();      // an address, clickable or not
wxColour RunningText();   // a service is running
wxColour FailedText();    // something failed
wxColour AccentColour();  // the selected entry

/// How well a colour stands out from another: 1 to 21. Text must have kLeastContrast from its
/// ground.
double Contrast(const wxColour& first, const wxColour& second);
inline constexpr double kLeastContrast = 4.5;

/// `text`, or the nearest lighter or darker colour with enough contrast from `ground`.
wxColour Readable(const wxColour& text, const wxColour& ground);

/// A mix of `share` (0 to 1) of `first` and the rest of `second`.
wxColour Mixed(const wxColour& first, const wxColour& second, double share);

}  // namespace ui
