#include "ui/controls/link.h"

#include <wx/hyperlink.h>

#include <mutex>

#include "platform/control_looks.h"
#include "ui/controls/colours.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

void UseReadableLinks() {
  static std::once_flag done;
  std::call_once(done, [] {
    platform::SetLinkColours(Typed(LinkText().GetAsString(wxC2S_HTML_SYNTAX)),
                             Typed(QuietText().GetAsString(wxC2S_HTML_SYNTAX)));
  });
}

}  // namespace

Link* MakeLink(wxWindow* parent) {
  auto* link = new wxHyperlinkCtrl(parent, wxID_ANY, " ", "", wxDefaultPosition, wxDefaultSize,
                                   wxHL_ALIGN_LEFT | wxBORDER_NONE);
  UseReadableLinks();
  link->SetVisitedColour(link->GetNormalColour());
  return link;
}

}  // namespace ui
