#pragma once

// What the clients of a service did lately, newest first: when, who, what, how much, how long, and
// how it ended.

#include <wx/listctrl.h>

#include <deque>
#include <string>
#include <vector>

#include "core/activity_record.h"

namespace ui {

class RecentList : public wxListCtrl {
 public:
  static constexpr int kColumns = 6;

  explicit RecentList(wxWindow* parent);

  /// Shows the entries that contain `filter` in any case in one of their columns. The selected row
  /// stays selected.
  void ShowEntries(const std::deque<core::ActivityRecord::Entry>& entries,
                   const std::string& filter);

  std::string Cell(int row, int column) const;

 private:
  using Row = std::vector<std::string>;

  wxString OnGetItemText(long item, long column) const override;
  void KeepSelection(const Row& selected);

  std::vector<Row> rows_;
};

}  // namespace ui
