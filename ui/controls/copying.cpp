#include "ui/controls/copying.h"

#include <wx/hyperlink.h>
#include <wx/listctrl.h>
#include <wx/menu.h>
#include <wx/stattext.h>

#include <utility>

#include "platform/control_looks.h"
#include "ui/controls/clipboard.h"
#include "ui/controls/link.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

std::string RowsOf(const wxListCtrl& list) {
  std::string rows;
  long row = -1;
  while ((row = list.GetNextItem(row, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED)) >= 0) {
    if (!rows.empty()) rows += "\n";
    for (int column = 0; column < list.GetColumnCount(); ++column) {
      if (column > 0) rows += "\t";
      rows += Typed(list.GetItemText(row, column));
    }
  }
  return rows;
}

void ShowMenu(wxWindow& control, const std::string& text) {
  wxMenu menu;
  menu.Append(wxID_COPY, Shown("复制(&C)"));
  menu.Bind(
      wxEVT_MENU, [text](wxCommandEvent&) { CopyToClipboard(text); }, wxID_COPY);
  control.PopupMenu(&menu);
}

bool IsCopyKey(const wxKeyEvent& event) {
  return event.GetModifiers() == wxMOD_CONTROL && event.GetKeyCode() == 'C';
}

}  // namespace

void LetCopy(wxWindow& control, std::function<std::string()> text) {
  control.Bind(wxEVT_CONTEXT_MENU, [&control, text](wxContextMenuEvent& event) {
    const std::string copied = text();
    if (copied.empty()) return event.Skip();
    ShowMenu(control, copied);
  });
  control.Bind(wxEVT_CHAR_HOOK, [text = std::move(text)](wxKeyEvent& event) {
    const std::string copied = IsCopyKey(event) ? text() : "";
    if (copied.empty() || !CopyToClipboard(copied)) event.Skip();
  });
}

void LetCopyTexts(wxWindow& window) {
  for (wxWindow* child : window.GetChildren()) {
    if (auto* label = wxDynamicCast(child, wxStaticText)) {
      if (platform::MakeSelectable(label->GetHandle())) continue;
      LetCopy(*label, [label] { return Typed(label->GetLabelText()); });
    } else if (auto* link = dynamic_cast<Link*>(child)) {
      LetCopy(*link, [link] { return Typed(link->GetToolTipText()); });  // the label may be cut
    } else if (auto* list = wxDynamicCast(child, wxListCtrl)) {
      LetCopy(*list, [list] { return RowsOf(*list); });
    } else {
      LetCopyTexts(*child);
    }
  }
}

}  // namespace ui
