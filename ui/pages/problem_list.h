#pragma once

// Lines of the error log, explained: when, what part of the program, and what happened.

#include <wx/listctrl.h>

#include <string>
#include <vector>

namespace ui {

/// A virtual list: only visible lines are explained, so their number costs nothing.
class ProblemList : public wxListCtrl {
 public:
  static constexpr int kColumns = 3;

  explicit ProblemList(wxWindow* parent);

  /// `lines`: as they are shown. The selected line stays selected, without an event; if it is gone,
  /// the first one is.
  void ShowLines(std::vector<std::string> lines);

  /// The selected line; empty if there is none.
  std::string SelectedLine() const;

  std::string Cell(int row, int column) const;

 private:
  long SelectedRow() const;
  wxString OnGetItemText(long item, long column) const override;

  std::vector<std::string> lines_;
};

}  // namespace ui
