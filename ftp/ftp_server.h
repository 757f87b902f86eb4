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

#include "core/connection_slots.h"
#include "core/draining_connections.h"
#include "core/program.h"
#include "core/service.h"
#include "ftp/ftp_options.h"
#include "ftp/ftp_session.h"
#include "ftp/listing_lines.h"
#include "ftp/memory_budget.h"

namespace ModFtp {

class FtpServer : public core::Service, private core::SlotEngine {
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
  std::vector<core::ConnectionReport> Connections() const override;
  core::Traffic TotalTraffic() const override { return sockets_.traffic; }
  std::optional<core::StartFailure> LastFailure() const override { return failure_; }

  const FtpOptions& Options() const { return options_; }
  const FtpServerState& State() const { return state_; }

  /// The port that is listened on; 0 while stopped.
  std::uint16_t ListeningPort() const { return FtpSvrSock_.Listener().LocalPort(); }

 private:
  using Client = std::shared_ptr<core::Connection>;

  static constexpr int kLastSlot = core::ConnectionSlots::kLastSlot;
  static constexpr std::size_t kMostListingBytes = 512U << 20;

  // A command as it arrived, and who sent it.
  struct Command {
    int slot;
    Client client;
    std::string text;
  };
  // Runs a command; what it returns is sent, line end included.
  using Handler = core::Task<std::string> (FtpServer::*)(Command);
  static Handler HandlerOf(const std::string& word);

  // What became of a deletion; the reason is empty if the rule refused it.
  struct Deletion {
    bool done = false;
    std::string reason;
  };

  // The events of the data sockets.
  class DataSocketEvents final : public core::SocketEvents {
   public:
    explicit DataSocketEvents(FtpServer& server) : server_(server) {}

    void OnConnectionRequest(int index, core::ConnectionRequest& request) override {
      server_.OnFtpDataConnectionRequest(index, request);
    }
    void OnConnect(int index) override { server_.HoldData(index); }
    core::Task<> OnDataArrival(int index, Client data) override {
      return server_.OnFtpDataArrival(index, std::move(data));
    }
    void OnClose(int index) override { server_.OnFtpDataClose(index); }
    void OnError(int index) override { server_.OnFtpDataClose(index); }

   private:
    FtpServer& server_;
  };

  // The control connection's events
  core::Task<> OnDataArrival(int slot, Client client) override;
  void OnClose(int slot) override { OnFtpControlClose(slot); }
  void OnError(int slot) override { OnFtpControlError(slot); }
  core::Task<> OnFtpControlData(int slot, Client client);
  void OnFtpControlClose(int slot);
  void OnFtpControlError(int slot);

  // Commands (command_interpreter.cpp, transfer_commands.cpp)
  core::Task<> HandleFtpCommand(int slot, Client client, std::string text);
  core::Task<> RefuseCommand(Client client, std::string beginning);
  core::Task<std::string> OnUser(Command command);
  core::Task<std::string> OnPass(Command command);
  core::Task<std::string> OnOpts(Command command);
  core::Task<std::string> OnSyst(Command command);
  core::Task<std::string> OnSite(Command command);
  core::Task<std::string> OnPwd(Command command);
  core::Task<std::string> OnType(Command command);
  core::Task<std::string> OnCwd(Command command);
  core::Task<std::string> OnNoop(Command command);
  core::Task<std::string> OnPort(Command command);
  core::Task<std::string> OnList(Command command);
  core::Task<std::string> OnPasv(Command command);
  core::Task<std::string> OnRest(Command command);
  core::Task<std::string> OnFeat(Command command);
  core::Task<std::string> OnRetr(Command command);
  core::Task<std::string> OnQuit(Command command);
  core::Task<std::string> OnSize(Command command);
  core::Task<std::string> OnMkd(Command command);
  core::Task<std::string> OnRnfr(Command command);
  core::Task<std::string> OnRnto(Command command);
  core::Task<std::string> OnStor(Command command);
  core::Task<std::string> OnDele(Command command);
  core::Task<std::string> OnRmd(Command command);
  core::Task<std::string> OnEmptyWord(Command command);
  core::Task<std::string> OnUnknown(Command command);

  // Data connections (data_connections.cpp)
  core::Task<bool> OpenActiveDataConnection(int slot, std::string text);
  std::string EnterPassiveMode(int slot);
  int ListenOnPassivePort();
  void OnFtpDataConnectionRequest(int index, core::ConnectionRequest& request);
  void OnFtpDataClose(int slot) { CloseDataSocket(slot); }
  void HoldData(int slot);
  void CloseDataSocket(int slot);
  core::Task<> AwaitDataConnection(int slot);
  core::Task<> AwaitDataClose(int slot);

  // Transfers (transfers.cpp, listing.cpp)
  core::Task<bool> SendFtpListing(int slot);
  core::Task<std::optional<std::string>> BuildListing(std::string folder, Client data,
                                                      std::shared_ptr<MemoryShare> memory);
  core::Task<bool> OpenRetrieve(int slot);
  bool SendNextChunk(int slot);
  bool SendPiece(int slot, std::size_t size);
  core::Task<> PaceSending(int slot, Client data);
  void OnFtpDataSendComplete(int slot);
  core::Task<bool> OpenStore(int slot, std::string text);
  core::Task<> OnFtpDataArrival(int slot, Client data);
  void WriteUploadData(int slot, const std::string& bytes);
  void FailTransfer(int slot);

  // Files (file_operations.cpp)
  bool ChangeFtpDirectory(int slot, const std::string& text);
  bool MakeFtpDirectory(int slot, const std::string& text);
  bool RemoveFtpDirectory(int slot, const std::string& text);
  core::Task<Deletion> DeleteFtpFile(int slot, std::string text);
  bool RenameFrom(int slot, const std::string& text);
  bool RenameTo(int slot, const std::string& text);
  bool MayChange(const std::string& path) const;
  std::optional<std::string> PathOf(int slot, const std::string& text, std::size_t position) const;

  // Slots are numbered from 1.
  FtpSession& Session(int slot) { return sessions_.at(static_cast<std::size_t>(slot - 1)); }
  const FtpSession& Session(int slot) const {
    return sessions_.at(static_cast<std::size_t>(slot - 1));
  }
  core::EventSocket& FtpSvrDataSock(int index) {
    return *FtpSvrDataSock_.at(static_cast<std::size_t>(index));
  }
  void Reply(int slot, std::string_view text);
  const core::ErrorLog& Errors() const { return environment_.program.errors; }

  core::ServiceEnvironment environment_;
  core::DrainingConnections draining_;
  core::SocketContext sockets_;
  core::ConnectionSlots FtpSvrSock_;
  DataSocketEvents dataEvents_;
  std::array<std::unique_ptr<core::EventSocket>, kLastSlot + 1> FtpSvrDataSock_;
  std::optional<core::StartFailure> failure_;
  FtpOptions options_;
  core::SettingsHolders::Holder heldOptions_;
  FtpServerState state_;
  MemoryBudget listingMemory_{kMostListingBytes};  // goes after the sessions
  std::array<FtpSession, kLastSlot> sessions_;
  std::minstd_rand random_;
};

/// A reply as it is sent: in the system code page, with its line end.
std::string ReplyLine(std::string_view text);

}  // namespace ModFtp
