#include "ui/controls/page.h"

#include <wx/sizer.h>

#include "ui/controls/layout.h"

namespace ui {

Page::Page(wxWindow* parent) : wxScrolledWindow(parent) {
  const int step = FromDIP(kEdge);
  SetScrollRate(step, step);
}

wxSize Page::WholeSize() { return GetSizer()->CalcMin(); }

bool Page::Layout() {
  const wxSize whole = GetSizer() == nullptr ? wxSize() : WholeSize();
  if (whole == whole_) return wxScrolledWindow::Layout();
  whole_ = whole;
  SetVirtualSize(whole);  // which lays out again
  return true;
}

}  // namespace ui
