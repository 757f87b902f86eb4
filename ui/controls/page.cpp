#include "ui/controls/page.h"

#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include "ui/controls/layout.h"

namespace ui {
namespace {

// Scrolled is the page as a whole: GTK complains about hidden controls that are moved.
wxWindow* MakeScroller(wxWindow* parent) {
  auto* scroller = new wxScrolledWindow(parent);
  const int step = scroller->FromDIP(kEdge);
  scroller->SetScrollRate(step, step);
  scroller->SetSizer(new wxBoxSizer(wxVERTICAL));
  return scroller;
}

}  // namespace

Page::Page(wxWindow* parent) : wxPanel(MakeScroller(parent)) {
  Frame().GetSizer()->Add(this, wxSizerFlags(1).Expand());
}

wxSize Page::WholeSize() { return GetSizer()->CalcMin(); }

bool Page::Show(bool show) {
  Frame().Show(show);
  return wxPanel::Show(show);
}

bool Page::Layout() {
  const wxSize whole = GetSizer() == nullptr ? wxSize() : WholeSize();
  if (whole != whole_) {
    whole_ = whole;
    SetMinSize(whole);
    Frame().FitInside();
  }
  return wxPanel::Layout();
}

}  // namespace ui
