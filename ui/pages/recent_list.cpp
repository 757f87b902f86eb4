#include "ui/pages/recent_list.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

#include "core/activity_text.h"
#include "core/traffic_text.h"
#include "platform/text_case.h"
#include "text/date_time.h"
#include "ui/controls/list_columns.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

using Entry = core::ActivityRecord::Entry;

constexpr std::array<ListColumn, RecentList::kColumns> kLooks = {{
    {"时间", "08:08:08"},
    {"谁", "188.188.188.188"},
    {"做了什么", ""},
    {"字节", "888.8 MB"},
    {"用时", "88 分 88 秒"},
    {"结果", "被新连接挤出"},
}};
constexpr int kLeastRest = 120;

std::string Upper(const std::string& text) { return platform::UpperCase(text); }

// "1,204"
std::string Grouped(int count) {
  std::string digits = std::to_string(count);
  for (std::size_t end = digits.size(); end > 3; end -= 3) digits.insert(end - 3, ",");
  return digits;
}

std::vector<std::string> CellsOf(const Entry& entry) {
  constexpr std::size_t kDate = 11;  // leaves the time
  const net::Activity& activity = entry.activity;
  const auto took = std::chrono::duration_cast<std::chrono::seconds>(entry.ended - activity.began);
  const std::string times = entry.count == 1 ? "" : " · " + Grouped(entry.count) + " 次";
  return {text::DateTimeText(entry.ended).substr(kDate),
          entry.address + times,
          core::ActivityText(activity),
          core::ByteText(activity.traffic.received + activity.traffic.sent),
          core::DurationText(took),
          core::EndText(entry.end)};
}

bool Contains(const std::vector<std::string>& cells, const std::string& upperFilter) {
  return upperFilter.empty() ||
         std::any_of(cells.begin(), cells.end(), [&](const std::string& cell) {
           return Upper(cell).find(upperFilter) != std::string::npos;
         });
}

}  // namespace

RecentList::RecentList(wxWindow* parent)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                 wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxBORDER_THEME) {
  AddColumns(*this, kLooks, kLeastRest);
}

void RecentList::ShowEntries(const std::deque<Entry>& entries, const std::string& filter) {
  const long selected = GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
  const Row kept = selected < 0 ? Row() : rows_.at(static_cast<std::size_t>(selected));
  const std::string upperFilter = Upper(filter);
  std::vector<Row> rows;
  for (const Entry& entry : entries | std::views::reverse) {
    Row row = CellsOf(entry);
    if (Contains(row, upperFilter)) rows.push_back(std::move(row));
  }
  if (rows == rows_) return;
  rows_ = std::move(rows);
  SetItemCount(static_cast<long>(rows_.size()));
  if (selected >= 0) KeepSelection(kept);
  Refresh();
}

// New rows push the selected one down.
void RecentList::KeepSelection(const Row& selected) {
  const auto found = std::find(rows_.begin(), rows_.end(), selected);
  const long old = GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
  if (old >= 0) SetItemState(old, 0, wxLIST_STATE_SELECTED);
  if (found == rows_.end()) return;
  SetItemState(found - rows_.begin(), wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
}

std::string RecentList::Cell(int row, int column) const {
  return rows_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
}

wxString RecentList::OnGetItemText(long item, long column) const {
  return Shown(Cell(static_cast<int>(item), static_cast<int>(column)));
}

}  // namespace ui
