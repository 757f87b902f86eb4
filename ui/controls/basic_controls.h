#pragma once

// The small controls that pages and dialogs are made of: headings, clickable addresses, buttons.

#include <functional>
#include <string>

class wxButton;
class wxHyperlinkCtrl;
class wxStaticText;
class wxWindow;

namespace ui {

/// A heading in the window's font, larger by `factor`.
wxStaticText* MakeHeading(wxWindow* parent, const char* text, double factor);

/// An address that can be clicked; hidden while it is empty. At most `width` pixels of it are
/// shown.
wxHyperlinkCtrl* MakeAddress(wxWindow* parent, const char* name,
                             const std::function<void()>& onClick);
void ShowAddress(wxHyperlinkCtrl& address, const std::string& text, int width);

/// A button that calls `action`.
wxButton* MakeActionButton(wxWindow* parent, const char* name, const char* text,
                           const std::function<void()>& action);

}  // namespace ui
