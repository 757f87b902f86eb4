#pragma once

// The open connections of a service: who, what, how far, how fast, how long still, since when. Rows
// keep their place, their selection and the order that the user chose while their contents change.

#include <wx/dataview.h>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/traffic_text.h"
#include "net/connection_report.h"

namespace ui {

class ConnectionList : public wxDataViewCtrl {
 public:
  explicit ConnectionList(wxWindow* parent);

  /// Must be called regularly: speeds come from the bytes since the last call.
  void ShowConnections(const std::vector<net::ConnectionReport>& connections,
                       core::TrafficRate::Clock::time_point now);

  /// The names of addresses, shown with them.
  void SetNames(std::map<std::string, std::string> names);

  /// The connection of the selected row; none if there is none.
  std::optional<net::ConnectionReport> Selected() const;

  int RowCount() const;
  /// What is shown, by the columns: who, what, percent, amount, speed, time left, since.
  std::vector<std::string> Cells(int row) const;

 private:
  class Model;

  std::string SelectedText() const;
  void AppendColumns();
  void ShareWidth();
  int WidthOf(unsigned column) const;

  Model* model_;  // owned with the control
};

}  // namespace ui
