#include "ui/controls/qr_picture.h"

#include <wx/dcbuffer.h>

#include <algorithm>

#include "ui/controls/accessible.h"
#include "ui/controls/layout.h"

namespace ui {
namespace {

constexpr int kSize = 280;  // eight pixels per module for an ordinary address

}  // namespace

QrPicture::QrPicture(wxWindow* parent)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, parent->FromDIP(wxSize(kSize, kSize))) {
  Named(this, "picQr");
  SetMinSize(GetSize());
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { OnPaint(); });
}

void QrPicture::ShowText(const std::string& text) {
  text_ = text;
  code_ = MakeQrCode(text);
  Describe(*this, "二维码：" + text, AccessibleRole::kPicture);
  Refresh();
}

// Each module is a whole number of pixels: straight edges are easier to read.
void QrPicture::OnPaint() {
  wxAutoBufferedPaintDC dc(this);
  dc.SetBackground(*wxWHITE_BRUSH);
  dc.Clear();
  if (!code_) return;
  const wxSize room = GetClientSize();
  const int module = std::min(room.x, room.y) / (code_->size + 2 * kQuietZone);
  const wxPoint corner((room.x - module * code_->size) / 2, (room.y - module * code_->size) / 2);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(*wxBLACK_BRUSH);
  for (int row = 0; row < code_->size; ++row) {
    for (int column = 0; column < code_->size; ++column) {
      if (!code_->IsDark(column, row)) continue;
      dc.DrawRectangle(corner + wxPoint(column, row) * module, {module, module});
    }
  }
}

}  // namespace ui
