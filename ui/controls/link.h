#pragma once

// A text that can be clicked, or pressed with the keyboard: wxEVT_HYPERLINK. It has the colour of
// links; while it is disabled, it looks like quiet text. The same for all, visited or not.

class wxGenericHyperlinkCtrl;
class wxWindow;

namespace ui {

using Link = wxGenericHyperlinkCtrl;  // or derived from it

Link* MakeLink(wxWindow* parent);

}  // namespace ui
