#include "ftp/ftp_server.h"

#include <chrono>

#include "core/hosts_file.h"
#include "core/service_environment.h"
#include "ftp/command_text.h"
#include "ftp/ftp_options_entry.h"
#include "ftp/replies.h"
#include "platform/system_message.h"
#include "text/code_page.h"

namespace ModFtp {
namespace {

std::uint32_t ClockSeed() {
  return static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count());
}

}  // namespace

using net::Task;

std::string ReplyLine(std::string_view text) { return text::ToSystem(text) + "\r\n"; }

FtpServer::FtpServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_{environment_.loop, draining_,
               [this](const std::string& error) { environment_.program.errors.LogError(error); }},
      FtpSvrSock_(sockets_, *this, net::ConnectionSlots::BusySlot::kRefuse,
                  ReplyLine(replies::kGreeting)),
      dataEvents_(*this),
      heldOptions_(environment_.program.Holders(),
                   [this](settings::Change& change) { WriteSettings(change, EntryOf(options_)); }),
      random_(ClockSeed()) {
  options_.SetDefaults(environment_.program);
  state_.ftpRoot = options_.ftpRoot;
  for (int index = 0; index <= kLastSlot; ++index) {
    FtpSvrDataSock_[static_cast<std::size_t>(index)] =
        std::make_unique<net::EventSocket>(sockets_, dataEvents_, index);
  }
}

bool FtpServer::LoadOptions() {
  const bool loaded =
      options_.LoadFtpOptions(environment_.program, FtpSvrSock_.Listener().LocalAddress());
  state_.ftpRoot = options_.ftpRoot;
  return loaded;
}

bool FtpServer::StartFtpListener() {
  failure_.reset();
  if (!LoadOptions()) {
    failure_ = {.reason = std::make_error_code(std::errc::invalid_argument)};
    if (options_.settingsFault) failure_ = {.reason = options_.settingsFault, .settings = true};
    return false;
  }
  std::error_code error;
  FtpSvrSock_.Listen(options_.ftpPort, error);
  if (error) {
    failure_ = {error, options_.ftpPort};
    environment_.program.errors.LogError(platform::SystemMessage(error));
    return false;
  }
  core::EnterInHostsFile(environment_, options_.ftpDomain);
  FtpSvrSock_.CreateSlots();
  return true;
}

bool FtpServer::StopFtpListener() {
  FtpSvrSock_.Close();
  FtpSvrDataSock(0).Close();
  for (int slot = 1; slot <= kLastSlot; ++slot) {
    CloseDataSocket(slot);
    Session(slot) = {};
  }
  draining_.DropAll();
  return !IsRunning();
}

// A transfer is shown in place of the command that started it.
std::vector<net::ConnectionReport> FtpServer::Connections() const {
  std::vector<net::ConnectionReport> report = FtpSvrSock_.Report("FTP");
  for (net::ConnectionReport& connection : report) {
    const auto& data = FtpSvrDataSock_.at(static_cast<std::size_t>(connection.slot))->Current();
    if (!data || data->IsClosed() || data->CurrentActivity().what.empty()) continue;
    connection.activity = data->CurrentActivity();
  }
  return report;
}

Task<> FtpServer::OnDataArrival(int slot, Client client) {
  return OnFtpControlData(slot, std::move(client));
}

// One arrival is one command, whatever it holds.
Task<> FtpServer::OnFtpControlData(int slot, Client client) {
  const std::string bytes = client->GetData();
  if (bytes.size() > kLongestCommand) {
    return RefuseCommand(client, bytes.substr(0, kLongestCommand));
  }
  return HandleFtpCommand(slot, client, text::FromSystem(bytes));
}

void FtpServer::OnFtpControlClose(int slot) {
  CloseDataSocket(slot);
  FtpSession& session = Session(slot);
  session.physicalDir.clear();
  session.ftpDir.clear();
  session.renameFrom.clear();
  FtpSvrSock_[slot].Close();
}

// The directories stay for the next client of the slot.
void FtpServer::OnFtpControlError(int slot) {
  CloseDataSocket(slot);
  FtpSvrSock_[slot].Close();
}

void FtpServer::Reply(int slot, std::string_view text) {
  FtpSvrSock_[slot].SendData(ReplyLine(text));
}

}  // namespace ModFtp
