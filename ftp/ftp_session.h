#pragma once

// What the FTP server keeps: a record per control slot, and one set of values that all sessions
// share. Sharing them is wanted: whoever spoke last has set them.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ftp/memory_budget.h"
#include "net/connection.h"
#include "platform/file.h"

namespace ModFtp {

/// The use of one data connection by one command.
struct Transfer {
  bool failed = false;  // the file gave out on the way
};

struct FtpSession {
  std::string physicalDir;   // current directory as a local path; empty until the first PWD or CWD
  std::string ftpDir;        // the same as the client sees it, with "/"
  std::string transferPath;  // of the last RETR
  std::string uploadPath;    // of the last STOR
  std::string renameFrom;    // of the last RNFR, refused ones included

  // Of the data connection, and gone with it.
  bool closeAfterSend = false;  // the next send-complete ends the data connection
  std::int32_t chunksSent = 0;  // RETR's progress
  std::int32_t fullChunks = 0;
  std::int16_t tailBytes = 0;          // behind the full chunks
  platform::File retrHandle;           // open while RETR sends
  platform::File storHandle;           // open from the first byte of an upload on
  std::shared_ptr<Transfer> transfer;  // null while no command has taken the data connection
  std::shared_ptr<MemoryShare> listingMemory;  // while a listing is on its way

  std::vector<int> waiting;  // commands that wait for a data connection, the newest last

  void EndTransfer() {
    closeAfterSend = false;
    chunksSent = fullChunks = 0;
    tailBytes = 0;
    retrHandle.Close();
    storHandle.Close();
    transfer.reset();
    listingMemory.reset();
  }
};

/// Shared by all sessions, and never reset by one of them.
struct FtpServerState {
  std::string ftpRoot;       // as in the options until a CWD has ended it with a separator
  std::string lastCommand;   // "USER" or "NOOP"
  std::string transferType;  // as TYPE named it; nothing depends on it
  bool abortRequested = false;
  std::int16_t portHigh = 0;  // of the last PORT
  std::int16_t portLow = 0;
  std::int16_t pendingDataSlot = 0;  // gets the next passive connection
  std::int32_t uploadByteCount = 0;  // since the last STOR
};

}  // namespace ModFtp
