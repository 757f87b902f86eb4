#pragma once

// The small controls of pages and dialogs: headings, clickable addresses, buttons, tabs.

#include <functional>
#include <string>

#include "ui/controls/link.h"

class wxButton;
class wxNotebook;
class wxStaticText;
class wxWindow;

namespace ui {

/// A heading in the window's font, larger by `factor`.
wxStaticText* MakeHeading(wxWindow* parent, const char* text, double factor);

/// A clickable address, hidden while empty. It is truncated to `width` pixels. It can be read while
/// it is disabled, too.
Link* MakeAddress(wxWindow* parent, const char* name, const std::function<void()>& onClick);
void ShowAddress(Link& address, const std::string& text, int width);

wxButton* MakeActionButton(wxWindow* parent, const char* name, const char* text,
                           const std::function<void()>& action);

/// The same, small, for places with little room. All are equally high.
wxButton* MakeSmallButton(wxWindow* parent, const char* name, const char* text,
                          const std::function<void()>& action);
void LabelSmallButton(wxButton& button, const char* text);

/// Gives a button the looks of the page's or dialog's main one, or takes them away again.
void ShowAsMain(wxButton& button, bool isMain = true);

/// Tabs with room around their captions.
wxNotebook* MakeNotebook(wxWindow* parent);

}  // namespace ui
