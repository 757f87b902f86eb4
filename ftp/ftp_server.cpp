#include "ftp/ftp_server.h"

#include "core/hosts_file.h"
#include "core/service_sockets.h"
#include "ftp/command_text.h"
#include "ftp/replies.h"
#include "platform/system_message.h"
#include "text/code_page.h"

namespace ModFtp {

using net::Task;

FtpServer::FtpServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_(core::SessionSocketsOf(environment_, draining_)),
      FtpSvrSock_(sockets_, *this, "FTP", net::ConnectionSlots::BusySlot::kRefuse,
                  ReplyLine(replies::kGreeting)),
      heldOptions_(
          environment_.program.Holders(),
          [this](settings::Change& change) { settings::WriteHeld(change, options_.Describe()); }),
      dataConnections_(
          sockets_, sessions_, environment_.protection,
          [this](int slot) { return FtpSvrSock_[slot].RemoteAddress(); },
          [this](int slot, Client data) {
            return transfers_.OnFtpDataArrival(slot, std::move(data));
          }),
      clientFiles_(sessions_.shared.ftpRoot, environment_.protection.OfFiles()),
      uploadRule_(options_, clientFiles_, environment_.protection),
      transfers_(
          dataConnections_, sessions_, clientFiles_, uploadRule_, listingMemory_,
          environment_.program.errors,
          [this](int slot, std::string_view text) { FtpSvrSock_[slot].SendData(ReplyLine(text)); }),
      files_(sessions_, clientFiles_, uploadRule_, listingMemory_),
      interpreter_(*this, environment_.protection, sessions_, files_, environment_.program.errors) {
  options_.SetDefaults(environment_.program);
  sessions_.SetRoot(options_.ftpRoot);
}

bool FtpServer::LoadOptions() {
  environment_.protection.Load();
  const bool loaded =
      options_.LoadFtpOptions(environment_.program, FtpSvrSock_.Listener().LocalAddress());
  sessions_.SetRoot(options_.ftpRoot);
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
  dataConnections_.Close();
  sessions_.Clear();
  draining_.DropAll();
  return !IsRunning();
}

// A transfer is shown in place of the command that started it.
std::vector<net::ConnectionReport> FtpServer::Connections() const {
  std::vector<net::ConnectionReport> report = FtpSvrSock_.Report();
  for (net::ConnectionReport& connection : report) {
    const Client& data = dataConnections_.Current(connection.slot);
    if (!data || data->IsClosed() || data->CurrentActivity().what.empty()) continue;
    connection.activity = data->CurrentActivity();
  }
  return report;
}

Task<> FtpServer::OnDataArrival(int slot, Client client) {
  return OnFtpControlData(slot, std::move(client));
}

// No coroutine itself: a command that waits must not keep the bytes as well as its text.
Task<> FtpServer::OnFtpControlData(int slot, Client client) {
  const std::string bytes = client->GetData();
  if (bytes.size() > kLongestCommand) {
    return RefuseCommand(slot, client, bytes.substr(0, kLongestCommand));
  }
  return AnswerCommand(slot, client, text::FromSystem(bytes));
}

Task<> FtpServer::AnswerCommand(int slot, Client client, std::string text) {
  Task<std::string> handling = interpreter_.HandleFtpCommand(slot, std::move(text));
  const std::string reply = co_await handling;
  client->SendData(reply);
  // While this waits the command counts as running; a client that reads no replies can have only so
  // many of them and is then not read either.
  Task<> sent = client->Sent();
  co_await sent;
}

Task<> FtpServer::RefuseCommand(int slot, Client client, std::string beginning) {
  Task<std::string> refusing = interpreter_.RefuseCommand(slot, beginning);
  const std::string reply = co_await refusing;
  if (reply.empty()) co_return;
  client->SendData(reply);
  Task<> sent = client->Sent();
  co_await sent;
}

void FtpServer::OnFtpControlClose(int slot) { EndSession(slot, net::ActivityEnd::kClientLeft); }

void FtpServer::Disconnect(const std::string&, int slot) {
  if (!FtpSvrSock_.Exists(slot) || FtpSvrSock_[slot].IsClosed()) return;
  EndSession(slot, net::ActivityEnd::kDisconnected);
}

void FtpServer::EndSession(int slot, net::ActivityEnd end) {
  dataConnections_.EndSession(slot, end);
  sessions_.ForgetState(slot);
  FtpSession& session = sessions_[slot];
  session.physicalDir.clear();
  session.ftpDir.clear();
  session.renameFrom.clear();
  FtpSvrSock_[slot].Close(end);
}

// The directories stay for the next client of the slot.
void FtpServer::OnFtpControlError(int slot) {
  dataConnections_.EndSession(slot, net::ActivityEnd::kClientLeft);
  sessions_.ForgetState(slot);
  FtpSvrSock_[slot].Close();
}

void FtpServer::ShowCommand(int slot, std::string_view what) {
  FtpSvrSock_[slot].Current()->Doing(what);
}

void FtpServer::ShowChange(int slot, net::Activity change, net::ActivityEnd end) {
  FtpSvrSock_[slot].Current()->Tell(std::move(change), end);
}

Task<core::Accounts::Answer> FtpServer::TrySignIn(int slot, std::string password) {
  return environment_.protection.TrySignIn(FtpSvrSock_[slot].Current(), sessions_[slot].login,
                                           std::move(password));
}

Task<bool> FtpServer::OpenActiveDataConnection(int slot, std::string text) {
  return dataConnections_.OpenActiveDataConnection(slot, std::move(text));
}

std::string FtpServer::EnterPassiveMode(int slot) {
  return dataConnections_.EnterPassiveMode(slot, FtpSvrSock_[slot].LocalAddress());
}

void FtpServer::CloseDataSocket(int slot) {
  dataConnections_.CloseDataSocket(slot, net::ActivityEnd::kFailed);
}

void FtpServer::CloseAllDataSockets(int slot) { dataConnections_.CloseAllDataSockets(slot); }

Task<bool> FtpServer::SendFtpListing(int slot) { return transfers_.SendFtpListing(slot); }

Task<bool> FtpServer::OpenRetrieve(int slot) { return transfers_.OpenRetrieve(slot); }

Task<bool> FtpServer::OpenStore(int slot, std::string text) {
  return transfers_.OpenStore(slot, std::move(text));
}

Task<> FtpServer::AwaitDataClose(int slot) { return dataConnections_.AwaitDataClose(slot); }

}  // namespace ModFtp
