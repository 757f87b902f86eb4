#pragma once

// Texts between the program, which has them in UTF-8, and the window toolkit. Both directions lose
// nothing: bytes that are no UTF-8, as an old path may hold, are shown as placeholders and come
// back as the same bytes.

#include <wx/string.h>

#include <string>

namespace ui {

/// A text of the program for the toolkit to show.
wxString Shown(const std::string& utf8);

/// What the user typed or the toolkit returned, as a text of the program.
std::string Typed(const wxString& text);

}  // namespace ui
