#include "ui/window/reachability.h"

#include "core/hosts_file.h"
#include "core/local_network.h"
#include "core/port_remarks.h"
#include "core/protection.h"
#include "core/reach_test.h"
#include "core/reach_verdict.h"
#include "core/service_addresses.h"
#include "core/start_diagnosis.h"
#include "ftp/data_address.h"
#include "platform/local_addresses.h"
#include "platform/native_path.h"
#include "ui/window/content.h"
#include "web/web_server.h"

namespace ui {
namespace {

using core::ServiceKind;

static_assert(core::kFirstFtpDataPort == ModFtp::kPassivePortBase);

std::vector<std::string> Machines() { return core::LikelyFirst(platform::LocalAddresses()); }

}  // namespace

std::vector<std::string> Reachability::AddressesOf(ServiceKind service) const {
  const core::Service& server = manager_.control.Of(service);
  std::vector<std::string> addresses;
  if (!server.IsRunning()) return addresses;
  for (const std::string& machine : Machines()) {
    addresses.push_back(core::ReachedAt(service, machine, server.PortsInUse()));
  }
  return addresses;
}

Reachability::Reachability(const Manager& manager, Content& content)
    : manager_(manager), content_(content) {}

Reachability::~Reachability() = default;

void Reachability::Show(ServiceKind service) {
  const core::Service& server = manager_.control.Of(service);
  const bool runs = server.IsRunning();
  const core::Ports ports = core::CurrentPorts(server);
  const std::vector<std::string> addresses = AddressesOf(service);
  content_.fraWelcome->SetReach(service, addresses);
  ServiceFrame& frame = content_.FrameOf(service);
  // After a failed start the reason says what is to be done about the port.
  frame.Reach().SetPorts(frame.HasFailed() ? "" : core::PortsText(service, ports));
  frame.Reach().SetRestartNote(core::RestartNote(service, server));
  frame.Reach().SetAddresses(addresses, runs);
  if (service != ServiceKind::kWeb) return;
  const bool withHttp = manager_.web.Options().answers.http;
  const bool isUsualPort = ports.first == core::kBrowsersPort;
  frame.Reach().SetAnswers(withHttp, withHttp || isUsualPort || frame.HasFailed());
}

void Reachability::ShowDomainRemark(ServiceKind service) {
  const core::Service& server = manager_.control.Of(service);
  const bool isShown = content_.FrameOf(service).ShowsAddress();
  content_.fraWelcome->SetRemark(
      service, isShown ? core::DomainRemark(server.Domain(), core::HostsFile()) : "");
}

std::optional<std::string> Reachability::AddressToGive() const {
  for (const ServiceKind service : core::kServices) {
    const std::vector<std::string> addresses = AddressesOf(service);
    if (!addresses.empty()) return addresses.front();
  }
  return std::nullopt;
}

void Reachability::Test(ServiceKind service) {
  EndTests();
  const core::Service& server = manager_.control.Of(service);
  const std::vector<std::string> machines = Machines();
  ReachRows& rows = content_.FrameOf(service).Reach();
  if (!server.IsRunning()) return rows.SetTest(core::NotRunning());
  if (manager_.protection.Options().reach == core::ProtectionOptions::Reach::kLocal)
    return rows.SetTest(core::OnlyThisMachine());
  if (machines.empty()) return rows.SetTest(core::NotInANetwork());
  if (!server.HasRoomForATest()) return rows.SetTest(core::TooManyClients());
  const core::ReachTarget target = {
      .service = service,
      .address = machines.front(),
      .ports = server.PortsInUse(),
      .firewall = platform::LookAtFirewall(manager_.program.ExecutableFile()),
      .executable = platform::PathTextForUser(manager_.program.ExecutableFile())};
  rows.SetTest({"正在测试 " + target.address + " …"});
  tested_ = service;
  test_ = std::make_unique<core::ReachTest>(manager_.loop);
  test_->Start(target.address, core::ReachTest::StepsOf(service, target.ports),
               [this, target](core::ReachTest::Finding finding, int port) {
                 tested_.reset();
                 const core::ReachVerdict verdict = core::VerdictOn(target, finding, port);
                 content_.FrameOf(target.service).Reach().SetTest(verdict);
               });
}

void Reachability::EndTest(ServiceKind service) {
  if (tested_ == service) EndTests();
  content_.FrameOf(service).Reach().SetTest({});
}

void Reachability::EndTests() {
  if (tested_) content_.FrameOf(*tested_).Reach().SetTest({});
  tested_.reset();
  test_.reset();
}

}  // namespace ui
