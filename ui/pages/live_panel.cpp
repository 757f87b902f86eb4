#include "ui/pages/live_panel.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

#include "core/activity_text.h"
#include "core/traffic_text.h"
#include "files/files.h"
#include "text/date_time.h"
#include "text/printable_text.h"
#include "ui/controls/accessible.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/log_panel.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr std::uint64_t kShownOfLog = 8192;  // bytes
constexpr int kListHeight = 70;              // minimum

// The headings and widths of the columns: the minimum, and the longest text to fit. "Doing" takes
// the remaining width.
struct ColumnLooks {
  const char* heading;
  int width;
  const char* longest;
};
constexpr std::array<ColumnLooks, ConnectionList::kColumns> kLooks = {{
    {"连接", 76, "SMTP 88"},
    {"地址", 116, "188.188.188.188"},
    {"开始于", 76, "08:08:08"},
    {"正在做", 0, ""},
    {"字节", 80, "888.8 MB"},
    {"进度", 60, "100%"},
}};
constexpr int kDoing = 3;
constexpr int kLeastDoing = 120;
constexpr std::size_t kLongestDoing = 300;  // bytes; drawing takes time in proportion to the length

// The font may be large compared to the rest.
int WidthOf(const ColumnLooks& looks, const wxWindow& list) {
  const int text = list.GetTextExtent(Shown(looks.longest)).x;
  return std::max(list.FromDIP(looks.width), text + list.FromDIP(2 * kGap));
}

ConnectionList::Row RowOf(const net::ConnectionReport& connection) {
  constexpr std::size_t kDate = 11;  // leaves the time
  const net::Activity& activity = connection.activity;
  return {connection.protocol + " " + std::to_string(connection.slot),
          connection.address,
          text::DateTimeText(connection.since).substr(kDate),
          text::Printable(core::ActivityText(activity), kLongestDoing),
          core::ByteText(activity.traffic.received + activity.traffic.sent),
          core::ProgressText(activity)};
}

}  // namespace

ConnectionList::ConnectionList(wxWindow* parent)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                 wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxBORDER_THEME) {
  for (const ColumnLooks& looks : kLooks) {
    AppendColumn(Shown(looks.heading), wxLIST_FORMAT_LEFT, WidthOf(looks, *this));
  }
  SetMinSize(FromDIP(wxSize(-1, kListHeight)));
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    ShareWidth();
  });
}

void ConnectionList::ShowConnections(const std::vector<net::ConnectionReport>& connections) {
  std::vector<Row> rows;
  rows.reserve(connections.size());
  for (const net::ConnectionReport& each : connections) rows.push_back(RowOf(each));
  if (rows == rows_) return;
  const bool resized = rows.size() != rows_.size();
  rows_ = std::move(rows);
  if (resized) SetItemCount(static_cast<long>(rows_.size()));
  Refresh();
}

wxString ConnectionList::OnGetItemText(long item, long column) const {
  return Shown(rows_.at(static_cast<std::size_t>(item)).at(static_cast<std::size_t>(column)));
}

void ConnectionList::ShareWidth() {
  int rest = GetClientSize().x;
  for (const ColumnLooks& looks : kLooks) {
    if (looks.width > 0) rest -= WidthOf(looks, *this);
  }
  SetColumnWidth(kDoing, std::max(rest, FromDIP(kLeastDoing)));
}

LivePanel::LivePanel(wxWindow* parent) : wxPanel(parent) {
  lstConnections = Named(new ConnectionList(this), "lstConnections");
  Describe(*lstConnections, "正在进行的连接", AccessibleRole::kTable);
  logHeading_ = new wxStaticText(this, wxID_ANY, "");
  logHeading_->SetForegroundColour(QuietText());
  lstLatest = Named(new LogList(this), "lstLatest");
  Describe(*lstLatest, "最近的日志", AccessibleRole::kTable);
  lstLatest->SetMinSize(FromDIP(wxSize(-1, kListHeight)));
  Column column(this, kTightGap);
  column.Add(lstConnections, 3);
  column.Add(logHeading_);
  column.Add(lstLatest, 2);
  WithMargin(this, column.Sizer());
}

void LivePanel::SetLog(std::string log, const std::string& name) {
  log_ = std::move(log);
  logHeading_->SetLabel(Shown("最近的日志（" + name + "）"));
}

void LivePanel::ShowNow(const std::vector<net::ConnectionReport>& connections) {
  lstConnections->ShowConnections(connections);
  ReadLog();
}

void LivePanel::ReadLog() {
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
