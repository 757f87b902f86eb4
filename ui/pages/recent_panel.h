#pragma once

// What a service's clients did lately, with a filter and an export. The owner refreshes it while it
// is visible.

#include <wx/panel.h>

#include <deque>
#include <functional>

#include "core/activity_record.h"

class wxButton;
class wxTextCtrl;

namespace ui {

class RecentList;

class RecentPanel : public wxPanel {
 public:
  RecentPanel(wxWindow* parent, const std::function<void()>& exportAll);

  /// `version`: of the entries; nothing is done while it stays the same.
  void ShowRecent(const std::deque<core::ActivityRecord::Entry>& entries, std::uint64_t version);

  RecentList* lstRecent;
  wxTextCtrl* txtFilter;
  wxButton* cmdExportRecent;

 private:
  std::uint64_t shownVersion_ = 0;
  bool filterChanged_ = true;
};

}  // namespace ui
