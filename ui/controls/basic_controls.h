#pragma once

// The small controls of pages and dialogs: headings, clickable addresses, buttons.

#include <functional>
#include <string>

class wxButton;
class wxHyperlinkCtrl;
class wxStaticText;
class wxWindow;

namespace ui {

/// A heading in the window's font, larger by `factor`.
wxStaticText* MakeHeading(wxWindow* parent, const char* text, double factor);

/// A clickable address, hidden while empty. It is truncated to `width` pixels. It can be read while
/// it is disabled, too.
wxHyperlinkCtrl* MakeAddress(wxWindow* parent, const char* name,
                             const std::function<void()>& onClick);
void ShowAddress(wxHyperlinkCtrl& address, const std::string& text, int width);

wxButton* MakeActionButton(wxWindow* parent, const char* name, const char* text,
                           const std::function<void()>& action);

/// The same, small, for places with little room. All are equally high.
wxButton* MakeSmallButton(wxWindow* parent, const char* name, const char* text,
                          const std::function<void()>& action);
void LabelSmallButton(wxButton& button, const char* text);

/// Gives a button the looks of the page's or dialog's main one, or takes them away again.
void ShowAsMain(wxButton& button, bool isMain = true);

}  // namespace ui
