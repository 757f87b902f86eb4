#include "ui/window/survey.h"

#include <array>
#include <string>
#include <vector>

#include "core/port_remarks.h"
#include "core/service_addresses.h"
#include "core/who_is_connected.h"
#include "files/files.h"
#include "platform/local_addresses.h"
#include "ui/pages/message_panel.h"
#include "ui/pages/problems_frame.h"
#include "ui/window/content.h"
#include "ui/window/status_bar.h"
#include "ui/window/steps_left.h"

namespace ui {
namespace {

using core::ServiceKind;

constexpr int kInterval = 400;  // milliseconds
constexpr int kLooksPerRareOne = 10;
constexpr int kClientsInterval = 2000;  // milliseconds
constexpr int kBrowsersPort = 80;

}  // namespace

Survey::Survey(StatusBar& status) : status_(status) {
  watch_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Look(); });
  clients_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { LookAtClients(); });
}

void Survey::Attach(const Manager& manager) {
  manager_ = &manager;
  unseen_.emplace(manager.program.File("RunErr.Log"));
  LookAtClients();
  clients_.Start(kClientsInterval);
}

void Survey::WatchWhileSeen(bool seen) {
  if (manager_ == nullptr || seen == watch_.IsRunning()) return;
  if (!seen) return watch_.Stop();
  watch_.Start(kInterval);
  LookAnew();
}

void Survey::LookAtClients() {
  std::array<net::Traffic, core::kServices.size()> totals;
  std::vector<net::ConnectionReport> all;
  for (const ServiceKind service : core::kServices) {
    const core::Service& server = manager_->control.Of(service);
    totals.at(core::IndexOf(service)) = server.TotalTraffic();
    const std::vector<net::ConnectionReport> connections = server.Connections();
    all.insert(all.end(), connections.begin(), connections.end());
  }
  history_.Add(totals, core::TrafficRate::Clock::now());
  if (onConnected_) onConnected_(!all.empty());
  const std::string news = news_.Next(manager_->record);
  if (onNews_ && !news.empty()) onNews_(news);
  if (!watch_.IsRunning()) return;
  content_->fraWelcome->ShowClients(core::WhoIsConnected(all), history_.Samples());
}

void Survey::LookAnew() {
  if (!watch_.IsRunning()) return;
  looks_ = 0;
  Look();
}

void Survey::Look() {
  ShowTraffic();
  // Before the count of what has not been seen.
  if (content_->fraProblems->IsShown()) unseen_->See(content_->fraProblems->ReadLog());
  if (looks_++ % kLooksPerRareOne == 0) LookRarely();
  for (const ServiceKind service : core::kServices) {
    ServiceFrame& frame = content_->FrameOf(service);
    if (!frame.IsShown()) continue;
    frame.ShowConnections(manager_->control.Of(service).Connections());
    frame.ShowRecent(manager_->record.EntriesOf(service), manager_->record.Version(service));
    frame.ShowLog();
  }
}

void Survey::ShowTraffic() {
  net::Traffic total;
  bool runs = false;
  for (const ServiceKind service : core::kServices) {
    core::Service& each = manager_->control.Of(service);
    const net::Traffic traffic = each.TotalTraffic();
    total.received += traffic.received;
    total.sent += traffic.sent;
    runs = runs || each.IsRunning();
  }
  const net::Traffic rate = rate_.Next(total, core::TrafficRate::Clock::now());
  if (runs) {
    status_.ShowTraffic(rate, total);
  } else {
    status_.ShowNoTraffic();
  }
}

// What changes rarely, and costs a system call or more.
void Survey::LookRarely() {
  content_->ShowUnseenProblems(unseen_->Count());
  if (content_->fraWelcome->IsShown()) ShowFirstSteps();
  for (const ServiceKind service : core::kServices) {
    if (!content_->FrameOf(service).IsShown()) continue;
    const std::string root = manager_->control.Of(service).RootDir();
    content_->FrameOf(service).SetRootMissing(!root.empty() && !files::FolderExists(root));
    ShowReach(service);
    if (service == ServiceKind::kMail) content_->messages->LookAnew();
  }
}

void Survey::ShowFirstSteps() {
  content_->fraWelcome->ShowSteps(FirstSteps::AreWanted() ? LookForSteps(*manager_) : StepsLeft());
}

void Survey::ShowReach(ServiceKind service) {
  const core::Service& server = manager_->control.Of(service);
  const bool runs = server.IsRunning();
  const core::Ports ports = runs ? server.PortsInUse() : server.PortsToUse();
  std::vector<std::string> addresses;
  if (runs) {
    for (const std::string& machine : platform::LocalAddresses()) {
      addresses.push_back(core::ReachedAt(service, machine, ports));
    }
  }
  ServiceFrame& frame = content_->FrameOf(service);
  frame.SetPorts(runs ? core::PortsText(service, ports) : "");
  frame.SetRestartNote(core::RestartNote(service, server));
  frame.SetReach(addresses);
  if (service != ServiceKind::kWeb) return;
  // After a failed start there is more urgent news about the port.
  frame.SetPortNote(ports.first != kBrowsersPort && !frame.HasFailed());
}

}  // namespace ui
