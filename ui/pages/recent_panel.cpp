#include "ui/pages/recent_panel.h"

#include <wx/button.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <utility>

#include "ui/controls/accessible.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/recent_list.h"

namespace ui {
namespace {

constexpr int kFilterWidth = 200;

}  // namespace

RecentPanel::RecentPanel(wxWindow* parent, const std::function<void()>& exportAll)
    : wxPanel(parent) {
  auto* label = new wxStaticText(this, wxID_ANY, Shown("筛选(&I)："));
  txtFilter = MakeField(this, "txtFilter", kFilterWidth);
  txtFilter->SetHint(Shown("地址、文件名、结果"));
  Describe(*txtFilter, "筛选");
  txtFilter->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { filterChanged_ = true; });
  cmdExportRecent = MakeActionButton(this, "cmdExportRecent", "导出(&M)...", exportAll);
  lstRecent = Named(new RecentList(this), "lstRecent");
  Describe(*lstRecent, "最近的活动", AccessibleRole::kTable);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(txtFilter, wxSizerFlags().CentreVertical());
  row->AddStretchSpacer();
  row->Add(cmdExportRecent);
  Column column(this);
  column.Add(row);
  column.Add(lstRecent, 1);
  WithMargin(this, column.Sizer());
}

void RecentPanel::ShowRecent(const std::deque<core::ActivityRecord::Entry>& entries,
                             std::uint64_t version) {
  if (!std::exchange(filterChanged_, false) && version == shownVersion_) return;
  shownVersion_ = version;
  lstRecent->ShowEntries(entries, Typed(txtFilter->GetValue()));
  cmdExportRecent->Enable(!entries.empty());
}

}  // namespace ui
