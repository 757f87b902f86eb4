#include "ui/window/survey.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <vector>

#include "core/local_network.h"
#include "core/protection.h"
#include "core/protection_text.h"
#include "core/who_is_connected.h"
#include "files/files.h"
#include "ftp/ftp_server.h"
#include "platform/local_addresses.h"
#include "ui/pages/message_panel.h"
#include "ui/pages/problems_frame.h"
#include "ui/window/content.h"
#include "ui/window/status_bar.h"
#include "ui/window/steps_done.h"

namespace ui {
namespace {

using core::ServiceKind;

constexpr int kInterval = 400;  // milliseconds
constexpr int kLooksPerRareOne = 10;
constexpr int kClientsInterval = 2000;  // milliseconds

}  // namespace

Survey::Survey(StatusBar& status) : status_(status) {
  watch_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Look(); });
  clients_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { LookAtClients(); });
}

void Survey::Attach(const Manager& manager) {
  manager_ = &manager;
  unseen_.emplace(manager.program.File("RunErr.Log"));
  reach_.emplace(manager, *content_);
  LookAtClients();
  clients_.Start(kClientsInterval);
}

void Survey::WatchWhileSeen(bool seen) {
  if (manager_ == nullptr || seen == watch_.IsRunning()) return;
  if (!seen) return watch_.Stop();
  watch_.Start(kInterval);
  LookAnew();
}

void Survey::End() {
  WatchWhileSeen(false);
  if (reach_) reach_->EndTests();
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
  LookForVisitors(all);
  history_.Add(totals, core::TrafficRate::Clock::now());
  if (onConnected_) onConnected_(!all.empty());
  const std::string news = news_.Next(manager_->record);
  if (onNews_ && !news.empty()) onNews_(news);
  if (!watch_.IsRunning()) return;
  content_->fraWelcome->ShowClients(core::WhoIsConnected(all), history_.Samples());
}

// Whoever comes from another computer has been given the address, which is a first step. Many stay
// for a moment only, so the record is searched as well.
void Survey::LookForVisitors(const std::vector<net::ConnectionReport>& open) {
  if (!FirstSteps::AreWanted() || FirstSteps::WasAddressGiven()) return;
  const auto changed = [this](ServiceKind service) {
    const std::uint64_t version = manager_->record.Version(service);
    return std::exchange(seenVersions_[core::IndexOf(service)], version) != version;
  };
  std::vector<ServiceKind> news;
  std::copy_if(core::kServices.begin(), core::kServices.end(), std::back_inserter(news), changed);
  if (open.empty() && news.empty()) return;
  const std::vector<std::string> own = core::LikelyFirst(platform::LocalAddresses());
  const auto isVisitor = [&own](const auto& each) {
    return !core::IsThisMachine(each.address, own);
  };
  bool found = std::any_of(open.begin(), open.end(), isVisitor);
  for (const ServiceKind service : news) {
    const auto& entries = manager_->record.EntriesOf(service);
    found = found || std::any_of(entries.begin(), entries.end(), isVisitor);
  }
  if (found) FirstSteps::RememberAddressGiven();
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
    const bool isShown = content_->FrameOf(service).IsShown();
    if (isShown || content_->fraWelcome->IsShown()) reach_->Show(service);
    if (!isShown) continue;
    const std::string root = manager_->control.Of(service).RootDir();
    content_->FrameOf(service).SetRootMissing(!root.empty() && !files::FolderExists(root));
    if (service == ServiceKind::kMail) content_->messages->LookAnew();
  }
}

void Survey::ShowFirstSteps() {
  WelcomeFrame& page = *content_->fraWelcome;
  const core::ProtectionOptions& protection = manager_->protection.Options();
  page.WarnOfChanges(!protection.confine && manager_->ftp.Options().uploadDir.empty());
  page.ShowProtection(core::ProtectionText(protection, manager_->protection.RefusedClients()),
                      core::ProtectionParts(protection));
  page.ShowSteps(FirstSteps::AreWanted() ? std::optional(LookForSteps(*manager_)) : std::nullopt);
}

}  // namespace ui
