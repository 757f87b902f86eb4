#include "ui/controls/card.h"

#include <wx/dcbuffer.h>
#include <wx/dcgraph.h>

#include "ui/controls/colours.h"

namespace ui {
namespace {

constexpr double kRadius = 8;

}  // namespace

Card::Card(wxWindow* parent) : wxPanel(parent) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetBackgroundColour(CardColour());
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { OnPaint(); });
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Refresh();
    event.Skip();
  });
}

void Card::OnPaint() {
  wxAutoBufferedPaintDC screen(this);
  screen.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
  screen.Clear();
  wxGCDC dc(screen);
  dc.SetBrush(wxBrush(CardColour()));
  dc.SetPen(wxPen(BorderColour(), 1));
  dc.DrawRoundedRectangle(GetClientRect().Deflate(1), FromDIP(kRadius));
}

}  // namespace ui
