#include "ui/window/tray_picture.h"

#include <wx/image.h>

#include <string_view>

#include "ui/controls/art.h"

namespace ui {
namespace {

wxImage Square(std::string_view name, int size) {
  return Art(name, size).GetBitmap(wxSize(size, size)).ConvertToImage();
}

}  // namespace

wxBitmap TrayPicture(TrayState state, int size) {
  wxImage picture = Square("tarnwerk", size);
  if (state == TrayState::kOff) return {picture.ConvertToGreyscale()};
  if (state == TrayState::kRunning) return {picture};
  const int mark = size * 5 / 8;
  picture.Paste(Square(state == TrayState::kFailed ? "failed" : "on", mark), size - mark,
                size - mark, wxIMAGE_ALPHA_BLEND_COMPOSE);
  return {picture};
}

}  // namespace ui
