#pragma once

// The program's pictures, drawn as ui/art/*.svg and embedded in the executable. The toolkit renders
// them at the size that a screen needs.

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

#include <map>
#include <string_view>

namespace ui {

/// The picture ui/art/`name`.svg, a square of `size` pixels on a screen at 100 %.
wxBitmapBundle Art(std::string_view name, int size);

/// The program's icon in the sizes that window systems use.
wxIconBundle ProgramIcons();

/// The SVG text of every picture, by name.
const std::map<std::string_view, const char*>& Pictures();

}  // namespace ui
