#pragma once

// What goes over the data connections: listings, downloads (RETR) and uploads (STOR). Each begins
// with a command, waits for the slot's data connection and ends with it; a transfer's file is open
// no longer than its data connection.
//
// Of a download the system gets as much at a time as it takes; the rest stays in the file. A
// listing is built whole and sent at once.

#include <functional>
#include <string>
#include <string_view>

#include "files/client_files.h"
#include "files/logs.h"
#include "ftp/data_connections.h"
#include "ftp/ftp_session.h"
#include "ftp/memory_budget.h"
#include "ftp/upload_rule.h"
#include "net/task.h"

namespace ModFtp {

class Transfers {
 public:
  using Client = DataConnections::Client;

  /// Sends a preliminary reply on a control connection, given without its line end.
  using SendReply = std::function<void(int slot, std::string_view text)>;

  /// All references must outlive this object. `memory` limits all listings together.
  Transfers(DataConnections& connections, FtpSessions& sessions, const files::ClientFiles& files,
            const UploadRule& rule, MemoryBudget& memory, const files::ErrorLog& errors,
            SendReply reply)
      : connections_(connections),
        sessions_(sessions),
        files_(files),
        rule_(rule),
        memory_(memory),
        errors_(errors),
        reply_(std::move(reply)) {}

  /// Each waits for the data connection and starts the transfer. False if it could not be started;
  /// whether the transfer itself fails shows in FtpSession::transfer. OpenRetrieve sends the
  /// session's transferPath.
  net::Task<bool> SendFtpListing(int slot);
  net::Task<bool> OpenRetrieve(int slot);
  net::Task<bool> OpenStore(int slot, std::string text);

  /// Bytes of an upload.
  net::Task<> OnFtpDataArrival(int slot, Client data);

 private:
  void ShowTransfer(net::Connection& data, net::Activity::Kind kind, const std::string& path) const;
  net::Task<> SendListing(int slot, Client data, std::string listing);
  bool OpenFile(FtpSession& session) const;
  net::Task<> SendChunks(int slot, Client data);
  void WriteUploadData(int slot, std::string_view bytes);
  void FailTransfer(int slot);
  net::ActivityEnd EndOfUnread(const net::Connection& data) const;

  DataConnections& connections_;
  FtpSessions& sessions_;
  const files::ClientFiles& files_;
  const UploadRule& rule_;
  MemoryBudget& memory_;
  const files::ErrorLog& errors_;
  SendReply reply_;
};

}  // namespace ModFtp
