#pragma once

// What the FTP server remembers between commands: one record per control slot, and one set of
// values that all sessions share. The sharing is intended: the last command to set a value sets it
// for every client.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/protection.h"
#include "ftp/memory_budget.h"
#include "net/connection_slots.h"
#include "platform/file.h"

namespace ModFtp {

/// The use of one data connection by one command.
struct Transfer {
  bool failed = false;  // the file could not be read or written to its end
};

/// Shared by all sessions; the end of a session resets none of it. Where sessions are kept apart,
/// each has its own.
struct FtpServerState {
  std::string ftpRoot;       // from the options; the first CWD appends a separator
  std::string lastCommand;   // "USER" or "NOOP"
  std::string transferType;  // as TYPE named it; nothing depends on it
  bool abortRequested = false;
  std::int16_t portHigh = 0;  // of the last PORT
  std::int16_t portLow = 0;
  std::int16_t pendingDataSlot = 0;  // gets the next passive connection
  std::int32_t uploadByteCount = 0;  // since the last STOR
};

struct FtpSession {
  std::string physicalDir;   // current directory as a local path; empty until the first PWD or CWD
  std::string ftpDir;        // the same as the client sees it, with "/"
  std::string transferPath;  // of the last RETR
  std::string uploadPath;    // of the last STOR
  std::string renameFrom;    // of the last RNFR, even if it was refused

  // The data connection's; EndTransfer resets them when it closes.
  std::int32_t chunksSent = 0;  // RETR's progress, in chunks of 4,096 bytes
  std::int32_t fullChunks = 0;
  std::int16_t tailBytes = 0;                  // to be sent after the full chunks
  platform::File retrHandle;                   // open while RETR sends
  platform::File storHandle;                   // open from the first byte of an upload on
  std::shared_ptr<Transfer> transfer;          // null while no command uses the data connection
  std::shared_ptr<MemoryShare> listingMemory;  // while a listing is being sent

  core::Login login;  // where clients have to sign in

  FtpServerState own;  // in place of the shared one, where sessions are kept apart

  std::vector<int> waiting;  // commands that wait for a data connection, the newest last

  void EndTransfer() {
    chunksSent = fullChunks = 0;
    tailBytes = 0;
    retrHandle.Close();
    storHandle.Close();
    transfer.reset();
    listingMemory.reset();
  }
};

/// Every session, by the number of its control slot, and the state that they share.
class FtpSessions {
 public:
  static constexpr int kLastSlot = net::ConnectionSlots::kLastSlot;

  explicit FtpSessions(const core::Protection& protection) : protection_(protection) {}

  /// `slot` counts from 1. The reference stays valid as long as this object.
  FtpSession& operator[](int slot) { return sessions_.at(static_cast<std::size_t>(slot - 1)); }

  /// What the commands of a session share with those of others, or only with one another.
  FtpServerState& StateOf(int slot) {
    return protection_.SeparatesSessions() ? (*this)[slot].own : shared;
  }

  void SetRoot(const std::string& root) {
    shared.ftpRoot = root;
    for (FtpSession& session : sessions_) session.own.ftpRoot = root;
  }

  /// To be called when a session ends.
  void ForgetState(int slot) {
    (*this)[slot].login.End();
    (*this)[slot].own = {};
    (*this)[slot].own.ftpRoot = shared.ftpRoot;
  }

  /// Forgets the sessions; what they share stays.
  void Clear() {
    sessions_ = {};
    SetRoot(shared.ftpRoot);
  }

  FtpServerState shared;

 private:
  const core::Protection& protection_;
  std::array<FtpSession, kLastSlot> sessions_;
};

}  // namespace ModFtp
