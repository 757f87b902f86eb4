#include "ui/controls/basic_controls.h"

#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/hyperlink.h>
#include <wx/notebook.h>
#include <wx/stattext.h>

#include "platform/control_looks.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

const wxSize kAroundCaption(10, 4);  // of a tab

}  // namespace

wxStaticText* MakeHeading(wxWindow* parent, const char* text, double factor) {
  auto* heading = new wxStaticText(parent, wxID_ANY, Shown(text));
  heading->SetFont(heading->GetFont().Bold().Scaled(static_cast<float>(factor)));
  return heading;
}

Link* MakeAddress(wxWindow* parent, const char* name, const std::function<void()>& onClick) {
  Link* address = MakeLink(parent);
  address->Bind(wxEVT_HYPERLINK, [onClick](wxHyperlinkEvent&) { onClick(); });
  address->Hide();
  return Named(address, name);
}

void ShowAddress(Link& address, const std::string& text, int width) {
  // The whole address, which the label may truncate.
  address.SetToolTip(Shown(text));
  const wxClientDC dc(&address);
  address.SetLabel(wxControl::Ellipsize(Shown(text), dc, wxELLIPSIZE_MIDDLE, width));
  address.SetCursor(wxCursor(wxCURSOR_HAND));
  address.Show(!text.empty());
}

wxButton* MakeActionButton(wxWindow* parent, const char* name, const char* text,
                           const std::function<void()>& action) {
  wxButton* button = MakeButton(parent, name, text);
  button->Bind(wxEVT_BUTTON, [action](wxCommandEvent&) { action(); });
  return button;
}

wxButton* MakeSmallButton(wxWindow* parent, const char* name, const char* text,
                          const std::function<void()>& action) {
  auto* button = Named(
      new wxButton(parent, wxID_ANY, " ", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT), name);
  button->Bind(wxEVT_BUTTON, [action](wxCommandEvent&) { action(); });
  LabelSmallButton(*button, text);
  return button;
}

// The toolkit's own size of such a button leaves no space around the text.
void LabelSmallButton(wxButton& button, const char* text) {
  button.SetLabel(Shown(text));
  const wxSize letters = button.GetTextExtent(Shown(text));
  const int height = button.GetTextExtent(Shown("字")).y;
  button.SetMinSize({letters.x + button.FromDIP(2 * kEdge), height + button.FromDIP(kEdge)});
}

// Where buttons look like this while they have the focus, they lose the looks with it. The data of
// a button is set while it is the main one.
void ShowAsMain(wxButton& button, bool isMain) {
  if (isMain == (button.GetClientData() != nullptr)) return;
  platform::ShowAsMainButton(button.GetHandle(), isMain);
  button.SetClientData(isMain ? &button : nullptr);
  if (!isMain) return;
  button.Bind(wxEVT_KILL_FOCUS, [&button](wxFocusEvent& event) {
    event.Skip();
    button.CallAfter([&button] {
      if (button.GetClientData() != nullptr) platform::ShowAsMainButton(button.GetHandle());
    });
  });
}

wxNotebook* MakeNotebook(wxWindow* parent) {
  auto* tabs = new wxNotebook(parent, wxID_ANY);
  const wxSize room = parent->FromDIP(kAroundCaption);
  platform::SetRoomAroundCaptions(tabs->GetHandle(), room.x, room.y);
  return tabs;
}

}  // namespace ui
