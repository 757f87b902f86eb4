#include "ui/pages/latest_log.h"

#include <wx/stattext.h>

#include <utility>

#include "files/files.h"
#include "ui/controls/accessible.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/log_panel.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr std::uint64_t kShownOfLog = 8192;  // bytes
constexpr int kListHeight = 70;              // minimum

}  // namespace

LatestLog::LatestLog(wxWindow* parent) : wxPanel(parent) {
  heading_ = new wxStaticText(this, wxID_ANY, "");
  heading_->SetForegroundColour(QuietText());
  lstLatest = Named(new LogList(this), "lstLatest");
  Describe(*lstLatest, "最近的日志", AccessibleRole::kTable);
  lstLatest->SetMinSize(FromDIP(wxSize(-1, kListHeight)));
  Column column(this, kTightGap);
  column.Add(heading_);
  column.Add(lstLatest, 1);
  WithMargin(this, column.Sizer());
}

void LatestLog::SetLog(std::string log, const std::string& name) {
  log_ = std::move(log);
  heading_->SetLabel(Shown("最近的日志（" + name + "）"));
}

void LatestLog::ReadLog() {
  std::error_code error;
  const std::uint64_t size = files::InspectPath(log_, error).size;
  if (size == shownSize_) return;
  shownSize_ = size;
  lstLatest->SetTail(files::ReadLogTail(log_, kShownOfLog));
  const int lines = lstLatest->GetItemCount();
  // Does not scroll while the user has selected a line to read.
  const bool picked = lstLatest->GetSelectedItemCount() > 0;
  if (lines > 0 && !picked) lstLatest->EnsureVisible(lines - 1);
}

}  // namespace ui
