#pragma once

// The FTP server as a service: it starts and stops, owns the control slots and reports on its
// connections. It passes what arrives on a control connection to the CommandInterpreter, one
// arrival as one command, and sends the reply; data connections, transfers and changes to files
// have classes of their own, which meet here.
//
// Commands belong to their control connection and end with it, the sending of a file to its data
// connection.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/service.h"
#include "core/service_environment.h"
#include "files/client_files.h"
#include "ftp/command_interpreter.h"
#include "ftp/data_connections.h"
#include "ftp/file_operations.h"
#include "ftp/ftp_options.h"
#include "ftp/ftp_session.h"
#include "ftp/memory_budget.h"
#include "ftp/transfers.h"
#include "ftp/upload_rule.h"
#include "net/connection_slots.h"
#include "net/draining_connections.h"
#include "settings/program.h"

namespace ModFtp {

class FtpServer : public core::Service, private net::SlotEngine, private CommandInterpreter::Host {
 public:
  explicit FtpServer(core::ServiceEnvironment environment);
  ~FtpServer() override { StopFtpListener(); }

  bool StartFtpListener();
  bool StopFtpListener();

  bool Start() override { return StartFtpListener(); }
  bool Stop() override { return StopFtpListener(); }
  bool IsRunning() const override { return FtpSvrSock_.IsListening(); }
  bool LoadOptions() override;
  std::string Domain() const override { return options_.ftpDomain; }
  std::string RootDir() const override { return options_.ftpRoot; }
  core::Ports PortsInUse() const override { return {ListeningPort()}; }
  core::Ports PortsToUse() const override { return {options_.ftpPort}; }
  std::vector<net::ConnectionReport> Connections() const override;
  bool HasRoomForATest() const override { return FtpSvrSock_.AreNextFree(2); }
  net::Traffic TotalTraffic() const override { return sockets_.traffic; }
  void Observe(net::ActivityObserver* observer) override { sockets_.observer = observer; }
  void Disconnect(const std::string& protocol, int slot) override;
  std::optional<core::StartFailure> LastFailure() const override { return failure_; }

  const FtpOptions& Options() const { return options_; }
  const FtpServerState& State() const { return sessions_.shared; }

  /// The port that is listened on; 0 while stopped.
  std::uint16_t ListeningPort() const { return FtpSvrSock_.Listener().LocalPort(); }

 private:
  using Client = std::shared_ptr<net::Connection>;

  static constexpr std::size_t kMostListingBytes = 512U << 20;

  // The control connections' events
  net::Task<> OnDataArrival(int slot, Client client) override;
  void OnClose(int slot) override { OnFtpControlClose(slot); }
  void OnError(int slot) override { OnFtpControlError(slot); }
  void OnIdle(int slot) override { EndSession(slot, net::ActivityEnd::kIdle); }
  net::Task<> OnFtpControlData(int slot, Client client);
  void OnFtpControlClose(int slot);
  void OnFtpControlError(int slot);
  void EndSession(int slot, net::ActivityEnd end);

  net::Task<> AnswerCommand(int slot, Client client, std::string text);
  net::Task<> RefuseCommand(int slot, Client client, std::string beginning);

  // The interpreter's host
  void ShowCommand(int slot, std::string_view what) override;
  bool IsObserved() const override { return sockets_.observer != nullptr; }
  void ShowChange(int slot, net::Activity change, net::ActivityEnd end) override;
  net::Task<core::Accounts::Answer> TrySignIn(int slot, std::string password) override;
  net::Task<bool> OpenActiveDataConnection(int slot, std::string text) override;
  std::string EnterPassiveMode(int slot) override;
  void CloseDataSocket(int slot) override;
  void CloseAllDataSockets(int slot) override;
  net::Task<bool> SendFtpListing(int slot) override;
  net::Task<bool> OpenRetrieve(int slot) override;
  net::Task<bool> OpenStore(int slot, std::string text) override;
  net::Task<> AwaitDataClose(int slot) override;

  // Later members refer to earlier ones.
  core::ServiceEnvironment environment_;
  net::DrainingConnections draining_;
  net::SocketContext sockets_;
  net::ConnectionSlots FtpSvrSock_;
  std::optional<core::StartFailure> failure_;
  FtpOptions options_;
  settings::SettingsHolders::Holder heldOptions_;
  MemoryBudget listingMemory_{kMostListingBytes};  // outlives the sessions, which hold shares of it
  FtpSessions sessions_{environment_.protection};
  DataConnections dataConnections_;
  files::ClientFiles clientFiles_;
  UploadRule uploadRule_;
  Transfers transfers_;
  FileOperations files_;
  CommandInterpreter interpreter_;
};

}  // namespace ModFtp
