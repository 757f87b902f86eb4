#include "ftp/ftp_server.h"

#include "core/code_page.h"
#include "core/hosts_file.h"

namespace ModFtp {
namespace {

constexpr std::string_view kGreeting = "220 连接FTP服务器成功 \r\n";

}  // namespace

using core::Task;

FtpServer::FtpServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_{environment_.loop, draining_,
               [this](const std::string& error) { environment_.program.errors.LogError(error); }},
      FtpSvrSock_(sockets_, *this, core::ConnectionSlots::BusySlot::kRefuse,
                  core::ToSystem(kGreeting)) {}

bool FtpServer::LoadOptions() {
  return options_.LoadFtpOptions(environment_.program, FtpSvrSock_.Listener().LocalAddress());
}

bool FtpServer::StartFtpListener() {
  if (!LoadOptions()) return false;
  std::error_code error;
  FtpSvrSock_.Listen(options_.ftpPort, error);
  if (error) {
    environment_.program.errors.LogError(error.message());
    return false;
  }
  core::AddHostsEntry(environment_.hostsFile, "127.0.0.1", options_.ftpDomain);
  FtpSvrSock_.CreateSlots();
  return true;
}

bool FtpServer::StopFtpListener() {
  FtpSvrSock_.Close();
  draining_.DropAll();
  return !IsRunning();
}

Task<> FtpServer::OnDataArrival(int, Client client) {
  client->GetData();
  co_return;
}

void FtpServer::OnClose(int slot) { FtpSvrSock_[slot].Close(); }

void FtpServer::OnError(int slot) { FtpSvrSock_[slot].Close(); }

}  // namespace ModFtp
