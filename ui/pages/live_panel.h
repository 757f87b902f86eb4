#pragma once

// Live activity of a service: its open connections and the latest lines of a log. The owner
// refreshes it while it is visible. It queries nothing itself except the log, which it reads only
// after a change.

#include <wx/listctrl.h>
#include <wx/panel.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "net/connection_report.h"

namespace ui {

class LogList;

/// A row per connection: slot, address, start time, current action, bytes, progress.
class ConnectionList : public wxListCtrl {
 public:
  static constexpr int kColumns = 6;
  using Row = std::array<std::string, kColumns>;

  explicit ConnectionList(wxWindow* parent);

  void ShowConnections(const std::vector<net::ConnectionReport>& connections);
  const std::vector<Row>& Rows() const { return rows_; }

 private:
  wxString OnGetItemText(long item, long column) const override;
  void ShareWidth();

  std::vector<Row> rows_;
};

class LivePanel : public wxPanel {
 public:
  LivePanel(wxWindow* parent);

  /// Sets the log: a path text, and the name to show. Must be called before the panel is shown.
  void SetLog(std::string log, const std::string& name);

  void ShowNow(const std::vector<net::ConnectionReport>& connections);

  ConnectionList* lstConnections;
  LogList* lstLatest;

 private:
  void ReadLog();

  std::string log_;
  std::uint64_t shownSize_ = 0;
  wxWindow* logHeading_;
};

}  // namespace ui
