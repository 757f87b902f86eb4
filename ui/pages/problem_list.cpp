#include "ui/pages/problem_list.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/problem_text.h"
#include "ui/controls/list_columns.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr std::array<ListColumn, ProblemList::kColumns> kLooks = {{
    {"时间", "8888-88-88 88:88:88"},
    {"什么", "E-Mail 服务"},
    {"说明", ""},
}};
constexpr int kLeastRest = 200;

}  // namespace

ProblemList::ProblemList(wxWindow* parent)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                 wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxBORDER_THEME) {
  AddColumns(*this, kLooks, kLeastRest);
}

void ProblemList::ShowLines(std::vector<std::string> lines) {
  constexpr long kState = wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED;
  wxEventBlocker quiet(this, wxEVT_LIST_ITEM_SELECTED);
  quiet.Block(wxEVT_LIST_ITEM_DESELECTED);
  const long former = SelectedRow();
  const std::string kept = SelectedLine();
  lines_ = std::move(lines);
  if (former >= 0) SetItemState(former, 0, kState);
  SetItemCount(static_cast<long>(lines_.size()));
  const auto found = std::find(lines_.begin(), lines_.end(), kept);
  const long next = found == lines_.end() ? 0 : found - lines_.begin();
  if (!lines_.empty()) SetItemState(next, kState, kState);
  Refresh();
}

long ProblemList::SelectedRow() const {
  return GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
}

std::string ProblemList::SelectedLine() const {
  const long row = SelectedRow();
  return row < 0 ? "" : lines_.at(static_cast<std::size_t>(row));
}

std::string ProblemList::Cell(int row, int column) const {
  const core::Problem problem = core::Explain(lines_.at(static_cast<std::size_t>(row)));
  const std::array<std::string, kColumns> cells = {problem.time, problem.what, problem.explanation};
  return cells.at(static_cast<std::size_t>(column));
}

wxString ProblemList::OnGetItemText(long item, long column) const {
  return Shown(Cell(static_cast<int>(item), static_cast<int>(column)));
}

}  // namespace ui
