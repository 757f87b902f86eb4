#pragma once

// The FTP server: open to any user name and password, with the commands that one arrival on a
// control connection holds, data connections both ways, and changes to files in one upload
// directory.
//
// The data sockets are paired with the control slots; element 0 is the one passive listener, which
// every PASV of any session moves. A connection to it goes to the slot that said PORT or PASV last.
//
// LIST, RETR and STOR wait for the data connection and for its end. While they wait, further
// commands of the same client run. They belong to the control connection, the sending of a file to
// the data connection; a transfer's file is open no longer than its data connection.

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>

#include "core/service.h"
#include "core/service_environment.h"
#include "ftp/ftp_options.h"
#include "ftp/ftp_session.h"
#include "ftp/listing_lines.h"
#include "ftp/memory_budget.h"
#include "net/connection_slots.h"
#include "net/draining_connections.h"
#include "settings/program.h"

namespace ModFtp {

class FtpServer : public core::Service, private net::SlotEngine {
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
  std::vector<net::ConnectionReport> Connections() const override;
  net::Traffic TotalTraffic() const override { return sockets_.traffic; }
  std::optional<core::StartFailure> LastFailure() const override { return failure_; }

  const FtpOptions& Options() const { return options_; }
  const FtpServerState& State() const { return state_; }

  /// The port that is listened on; 0 while stopped.
  std::uint16_t ListeningPort() const { return FtpSvrSock_.Listener().LocalPort(); }

 private:
  using Client = std::shared_ptr<net::Connection>;

  static constexpr int kLastSlot = net::ConnectionSlots::kLastSlot;
  static constexpr std::size_t kMostListingBytes = 512U << 20;

  // A command as it arrived, and who sent it.
  struct Command {
    int slot;
    Client client;
    std::string text;
  };
  // Runs a command; what it returns is sent, line end included.
  using Handler = net::Task<std::string> (FtpServer::*)(Command);
  static Handler HandlerOf(const std::string& word);

  // What became of a deletion; the reason is empty if the rule refused it.
  struct Deletion {
    bool done = false;
    std::string reason;
  };

  // The events of the data sockets.
  class DataSocketEvents final : public net::SocketEvents {
   public:
    explicit DataSocketEvents(FtpServer& server) : server_(server) {}

    void OnConnectionRequest(int index, net::ConnectionRequest& request) override {
      server_.OnFtpDataConnectionRequest(index, request);
    }
    void OnConnect(int index) override { server_.HoldData(index); }
    net::Task<> OnDataArrival(int index, Client data) override {
      return server_.OnFtpDataArrival(index, std::move(data));
    }
    void OnClose(int index) override { server_.OnFtpDataClose(index); }
    void OnError(int index) override { server_.OnFtpDataClose(index); }

   private:
    FtpServer& server_;
  };

  // The control connection's events
  net::Task<> OnDataArrival(int slot, Client client) override;
  void OnClose(int slot) override { OnFtpControlClose(slot); }
  void OnError(int slot) override { OnFtpControlError(slot); }
  net::Task<> OnFtpControlData(int slot, Client client);
  void OnFtpControlClose(int slot);
  void OnFtpControlError(int slot);

  // Commands (command_interpreter.cpp, transfer_commands.cpp)
  net::Task<> HandleFtpCommand(int slot, Client client, std::string text);
  net::Task<> RefuseCommand(Client client, std::string beginning);
  net::Task<std::string> OnUser(Command command);
  net::Task<std::string> OnPass(Command command);
  net::Task<std::string> OnOpts(Command command);
  net::Task<std::string> OnSyst(Command command);
  net::Task<std::string> OnSite(Command command);
  net::Task<std::string> OnPwd(Command command);
  net::Task<std::string> OnType(Command command);
  net::Task<std::string> OnCwd(Command command);
  net::Task<std::string> OnNoop(Command command);
  net::Task<std::string> OnPort(Command command);
  net::Task<std::string> OnList(Command command);
  net::Task<std::string> OnPasv(Command command);
  net::Task<std::string> OnRest(Command command);
  net::Task<std::string> OnFeat(Command command);
  net::Task<std::string> OnRetr(Command command);
  net::Task<std::string> OnQuit(Command command);
  net::Task<std::string> OnSize(Command command);
  net::Task<std::string> OnMkd(Command command);
  net::Task<std::string> OnRnfr(Command command);
  net::Task<std::string> OnRnto(Command command);
  net::Task<std::string> OnStor(Command command);
  net::Task<std::string> OnDele(Command command);
  net::Task<std::string> OnRmd(Command command);
  net::Task<std::string> OnEmptyWord(Command command);
  net::Task<std::string> OnUnknown(Command command);

  // Data connections (data_connections.cpp)
  net::Task<bool> OpenActiveDataConnection(int slot, std::string text);
  std::string EnterPassiveMode(int slot);
  int ListenOnPassivePort();
  void OnFtpDataConnectionRequest(int index, net::ConnectionRequest& request);
  void OnFtpDataClose(int slot) { CloseDataSocket(slot); }
  void HoldData(int slot);
  void CloseDataSocket(int slot);
  net::Task<> AwaitDataConnection(int slot);
  net::Task<> AwaitDataClose(int slot);

  // Transfers (transfers.cpp, listing.cpp)
  net::Task<bool> SendFtpListing(int slot);
  net::Task<std::optional<std::string>> BuildListing(std::string folder, Client data,
                                                     std::shared_ptr<MemoryShare> memory);
  net::Task<bool> OpenRetrieve(int slot);
  bool SendNextChunk(int slot);
  bool SendPiece(int slot, std::size_t size);
  net::Task<> PaceSending(int slot, Client data);
  void OnFtpDataSendComplete(int slot);
  net::Task<bool> OpenStore(int slot, std::string text);
  net::Task<> OnFtpDataArrival(int slot, Client data);
  void WriteUploadData(int slot, const std::string& bytes);
  void FailTransfer(int slot);

  // Files (file_operations.cpp)
  bool ChangeFtpDirectory(int slot, const std::string& text);
  bool MakeFtpDirectory(int slot, const std::string& text);
  bool RemoveFtpDirectory(int slot, const std::string& text);
  net::Task<Deletion> DeleteFtpFile(int slot, std::string text);
  bool RenameFrom(int slot, const std::string& text);
  bool RenameTo(int slot, const std::string& text);
  bool MayChange(const std::string& path) const;
  std::optional<std::string> PathOf(int slot, const std::string& text, std::size_t position) const;

  // Slots are numbered from 1.
  FtpSession& Session(int slot) { return sessions_.at(static_cast<std::size_t>(slot - 1)); }
  const FtpSession& Session(int slot) const {
    return sessions_.at(static_cast<std::size_t>(slot - 1));
  }
  net::EventSocket& FtpSvrDataSock(int index) {
    return *FtpSvrDataSock_.at(static_cast<std::size_t>(index));
  }
  void Reply(int slot, std::string_view text);
  const files::ErrorLog& Errors() const { return environment_.program.errors; }

  core::ServiceEnvironment environment_;
  net::DrainingConnections draining_;
  net::SocketContext sockets_;
  net::ConnectionSlots FtpSvrSock_;
  DataSocketEvents dataEvents_;
  std::array<std::unique_ptr<net::EventSocket>, kLastSlot + 1> FtpSvrDataSock_;
  std::optional<core::StartFailure> failure_;
  FtpOptions options_;
  settings::SettingsHolders::Holder heldOptions_;
  FtpServerState state_;
  MemoryBudget listingMemory_{kMostListingBytes};  // goes after the sessions
  std::array<FtpSession, kLastSlot> sessions_;
  std::minstd_rand random_;
};

/// A reply as it is sent: in the system code page, with its line end.
std::string ReplyLine(std::string_view text);

}  // namespace ModFtp
