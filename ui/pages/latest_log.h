#pragma once

// The latest lines of a log, read while the panel is visible and only after a change.

#include <wx/panel.h>

#include <cstdint>
#include <string>

namespace ui {

class LogList;

class LatestLog : public wxPanel {
 public:
  explicit LatestLog(wxWindow* parent);

  /// Sets the log: a path text, and the name to show. Must be called before the panel is shown.
  void SetLog(std::string log, const std::string& name);

  void ReadLog();

  LogList* lstLatest;

 private:
  std::string log_;
  std::uint64_t shownSize_ = 0;
  wxWindow* heading_;
};

}  // namespace ui
