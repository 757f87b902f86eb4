#include "ui/controls/art.h"

namespace ui {

wxBitmapBundle Art(std::string_view name, int size) {
  return wxBitmapBundle::FromSVG(Pictures().at(name), wxSize(size, size));
}

wxIconBundle ProgramIcons() {
  const wxBitmapBundle picture = Art("tarnwerk", 32);
  wxIconBundle icons;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    wxIcon icon;
    icon.CopyFromBitmap(picture.GetBitmap(wxSize(size, size)));
    icons.AddIcon(icon);
  }
  return icons;
}

}  // namespace ui
