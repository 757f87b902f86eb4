#pragma once

// Conversion between the program's UTF-8 and the toolkit's strings. Both directions are lossless:
// bytes that are not UTF-8, as in an old path, are shown as placeholders and come back unchanged.

#include <wx/string.h>

#include <string>

namespace ui {

/// A text of the program as the toolkit's string.
wxString Shown(const std::string& utf8);

/// A string from the user or the toolkit as a text of the program.
std::string Typed(const wxString& text);

}  // namespace ui
