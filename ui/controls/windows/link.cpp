#include "ui/controls/link.h"

#include <wx/hyperlink.h>

#include "ui/controls/accessible.h"
#include "ui/controls/colours.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

// Painted by the toolkit: the system's own link has a fixed colour, whatever is behind it, and the
// same looks while it is disabled.
class PaintedLink : public wxGenericHyperlinkCtrl {
 public:
  explicit PaintedLink(wxWindow* parent)
      : wxGenericHyperlinkCtrl(parent, wxID_ANY, " ", " ", wxDefaultPosition, wxDefaultSize,
                               wxHL_ALIGN_LEFT | wxBORDER_NONE) {
    ShowState();
    Bind(wxEVT_CHAR_HOOK, &PaintedLink::OnKey, this);
  }

  bool Enable(bool enable) override {
    if (!wxGenericHyperlinkCtrl::Enable(enable)) return false;
    ShowState();
    return true;
  }

  bool SetFont(const wxFont& font) override {
    return wxGenericHyperlinkCtrl::SetFont(IsThisEnabled() ? font.Underlined() : font);
  }

  void SetLabel(const wxString& label) override {
    wxGenericHyperlinkCtrl::SetLabel(label);
    Refresh();
    Describe(*this, Typed(label), AccessibleRole::kLink);
  }

 private:
  void ShowState() {
    const wxColour colour = IsThisEnabled() ? LinkText() : QuietText();
    SetNormalColour(colour);
    SetVisitedColour(colour);
    SetHoverColour(colour);
    wxFont font = GetFont();
    font.SetUnderlined(false);
    SetFont(font);
    Refresh();
  }

  // The base class takes the space bar only.
  void OnKey(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key != WXK_RETURN && key != WXK_NUMPAD_ENTER) return event.Skip();
    SendEvent();
  }
};

}  // namespace

Link* MakeLink(wxWindow* parent) { return new PaintedLink(parent); }

}  // namespace ui
