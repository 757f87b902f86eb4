#pragma once

// Asks whether the Web server shall answer so that every browser shows the pages. Nothing turns
// that on by itself.

class wxWindow;

namespace ui {

/// `port`: that of the Web server, which the question names if browsers show nothing there now.
bool MayAnswerForBrowsers(wxWindow* parent, int port);

}  // namespace ui
