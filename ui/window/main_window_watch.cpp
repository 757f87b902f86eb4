// What the main window looks at by itself while it can be seen, a few times a second: the traffic,
// the open connections and the log of the page that is shown. Hidden or minimised it looks at
// nothing.

#include <algorithm>
#include <chrono>

#include "core/service_addresses.h"
#include "files/files.h"
#include "platform/local_addresses.h"
#include "ui/pages/live_panel.h"
#include "ui/pages/service_looks.h"
#include "ui/window/main_window.h"
#include "ui/window/status_bar.h"
#include "ui/window/steps_left.h"

namespace ui {
namespace {

using core::ServiceKind;

constexpr int kInterval = 400;  // milliseconds
constexpr int kLooksPerSurvey = 10;

core::ListeningPorts PortsOf(const Manager& manager, ServiceKind service) {
  switch (service) {
    case ServiceKind::kWeb:
      return {manager.web.ListeningPort()};
    case ServiceKind::kFtp:
      return {manager.ftp.ListeningPort()};
    case ServiceKind::kMail:
      return {manager.mail.SmtpPort(), manager.mail.Pop3Port()};
  }
  return {};
}

}  // namespace

void frmMain::WatchWhileSeen(bool seen) {
  if (!manager_ || seen == watch_.IsRunning()) return;
  if (!seen) return watch_.Stop();
  watch_.Start(kInterval);
  looks_ = 0;
  Look();
}

void frmMain::Look() {
  ShowTraffic();
  if (looks_++ % kLooksPerSurvey == 0) Survey();
  for (const ServiceKind service : kServices) {
    ServiceFrame& frame = FrameOf(service);
    if (!frame.IsShown()) continue;
    frame.ShowConnections(manager_->control.Of(service).Connections());
  }
}

void frmMain::ShowTraffic() {
  net::Traffic total;
  bool runs = false;
  for (const ServiceKind service : kServices) {
    core::Service& each = manager_->control.Of(service);
    const net::Traffic traffic = each.TotalTraffic();
    total.received += traffic.received;
    total.sent += traffic.sent;
    runs = runs || each.IsRunning();
  }
  const net::Traffic rate = rate_.Next(total, core::TrafficRate::Clock::now());
  if (runs) {
    stbInfo->ShowTraffic(rate, total);
  } else {
    stbInfo->ShowNoTraffic();
  }
}

// What changes seldom, and costs a question to the system each.
void frmMain::Survey() {
  if (fraWelcome->IsShown()) ShowFirstSteps();
  for (const ServiceKind service : kServices) {
    if (!FrameOf(service).IsShown()) continue;
    const std::string root = manager_->control.Of(service).RootDir();
    FrameOf(service).SetRootMissing(!root.empty() && !files::FolderExists(root));
    ShowReach(service);
  }
}

void frmMain::ShowFirstSteps() {
  fraWelcome->ShowSteps(FirstSteps::AreWanted() ? LookForSteps(*manager_) : StepsLeft());
}

void frmMain::ShowReach(ServiceKind service) {
  std::vector<std::string> addresses;
  if (manager_->control.Of(service).IsRunning()) {
    for (const std::string& machine : platform::LocalAddresses()) {
      addresses.push_back(core::ReachedAt(service, machine, PortsOf(*manager_, service)));
    }
  }
  FrameOf(service).SetReach(addresses);
  if (service == ServiceKind::kWeb) {
    constexpr std::int16_t kBrowsersPort = 80;
    // A start that failed has more urgent things to say of the port.
    fraWeb->SetPortNote(manager_->web.Options().WebPort != kBrowsersPort &&
                        !failed_[IndexOf(service)]);
  }
}

}  // namespace ui
