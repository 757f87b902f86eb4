#pragma once

// The FTP server: its control listener, slots and greeting.

#include <memory>
#include <string>

#include "core/connection_slots.h"
#include "core/draining_connections.h"
#include "core/program.h"
#include "core/service.h"
#include "ftp/ftp_options.h"

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

  const FtpOptions& Options() const { return options_; }

  /// The port that is listened on; 0 while stopped.
  std::uint16_t ListeningPort() const { return FtpSvrSock_.Listener().LocalPort(); }

 private:
  using Client = std::shared_ptr<core::Connection>;

  core::Task<> OnDataArrival(int slot, Client client) override;
  void OnClose(int slot) override;
  void OnError(int slot) override;

  core::ServiceEnvironment environment_;
  core::DrainingConnections draining_;
  core::SocketContext sockets_;
  core::ConnectionSlots FtpSvrSock_;
  FtpOptions options_;
};

}  // namespace ModFtp
