#pragma once

// The program's pictures. They are drawn as ui/art/*.svg and are part of the executable; the
// toolkit renders them at the size that a screen needs.

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

#include <map>
#include <string_view>

namespace ui {

/// The picture ui/art/`name`.svg, `size` pixels square on a screen at 100 %.
wxBitmapBundle Art(std::string_view name, int size);

/// The program's picture in the sizes that window systems ask for.
wxIconBundle ProgramIcons();

/// Every picture's SVG text by its name.
const std::map<std::string_view, const char*>& Pictures();

}  // namespace ui
