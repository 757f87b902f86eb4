#pragma once

// What goes on in a service now: its open connections, and what the user can do about the selected
// one. The owner refreshes it while it is visible.

#include <wx/panel.h>

#include <functional>
#include <vector>

#include "net/connection_report.h"

class wxButton;

namespace ui {

class ConnectionList;

class LivePanel : public wxPanel {
 public:
  struct Actions {
    std::function<void(const net::ConnectionReport&)> copyAddress;
    std::function<void(const net::ConnectionReport&)> openFolder;
    std::function<void(const net::ConnectionReport&)> disconnect;
  };

  LivePanel(wxWindow* parent, Actions actions);

  void ShowNow(const std::vector<net::ConnectionReport>& connections);

  ConnectionList* lstConnections;
  wxButton* cmdCopyAddress;
  wxButton* cmdOpenFolder;  // of the file that is transferred
  wxButton* cmdDisconnect;

 private:
  using Action = std::function<void(const net::ConnectionReport&)>;

  wxButton* MakeSelectionButton(const char* name, const char* text, Action action);
  void EnableFitting();

  Actions actions_;
};

}  // namespace ui
