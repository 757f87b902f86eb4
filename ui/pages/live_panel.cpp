#include "ui/pages/live_panel.h"

#include <wx/button.h>
#include <wx/menu.h>
#include <wx/sizer.h>

#include <utility>

#include "ui/controls/accessible.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/connection_list.h"

namespace ui {

LivePanel::LivePanel(wxWindow* parent, Actions actions)
    : wxPanel(parent), actions_(std::move(actions)) {
  lstConnections = Named(new ConnectionList(this), "lstConnections");
  Describe(*lstConnections, "正在进行的连接", AccessibleRole::kTable);
  cmdCopyAddress = MakeSelectionButton("cmdCopyAddress", "复制地址(&K)", actions_.copyAddress);
  cmdOpenFolder = MakeSelectionButton("cmdOpenFolder", "打开所在文件夹(&N)", actions_.openFolder);
  cmdDisconnect = MakeSelectionButton("cmdDisconnect", "断开(&X)", actions_.disconnect);
  lstConnections->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED,
                       [this](wxDataViewEvent&) { EnableFitting(); });
  lstConnections->Bind(wxEVT_DATAVIEW_ITEM_CONTEXT_MENU, [this](wxDataViewEvent&) {
    EnableFitting();
    wxMenu menu;
    for (wxButton* button : {cmdCopyAddress, cmdOpenFolder, cmdDisconnect}) {
      menu.Append(button->GetId(), button->GetLabel())->Enable(button->IsEnabled());
    }
    menu.Bind(wxEVT_MENU, [this](wxCommandEvent& event) {
      wxCommandEvent press(wxEVT_BUTTON, event.GetId());
      FindWindow(event.GetId())->ProcessWindowEvent(press);
    });
    PopupMenu(&menu);
  });
  auto* buttons = new wxBoxSizer(wxHORIZONTAL);
  buttons->AddStretchSpacer();
  for (wxButton* button : {cmdCopyAddress, cmdOpenFolder, cmdDisconnect}) {
    buttons->Add(button, wxSizerFlags().Border(wxLEFT, FromDIP(kGap)));
  }
  Column column(this);
  column.Add(lstConnections, 1);
  column.Add(buttons);
  WithMargin(this, column.Sizer());
  EnableFitting();
}

wxButton* LivePanel::MakeSelectionButton(const char* name, const char* text, Action action) {
  return MakeActionButton(this, name, text, [this, action = std::move(action)] {
    const auto selected = lstConnections->Selected();
    if (selected) action(*selected);
  });
}

void LivePanel::ShowNow(const std::vector<net::ConnectionReport>& connections) {
  lstConnections->ShowConnections(connections, core::TrafficRate::Clock::now());
  EnableFitting();
}

void LivePanel::EnableFitting() {
  const auto selected = lstConnections->Selected();
  cmdCopyAddress->Enable(selected.has_value());
  cmdOpenFolder->Enable(selected && !selected->activity.path.empty());
  cmdDisconnect->Enable(selected.has_value());
}

}  // namespace ui
