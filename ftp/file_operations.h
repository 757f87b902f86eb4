#pragma once

// The commands that change the current directory, and those that change files and folders. Each
// takes its name out of the whole text of the command. What may be changed is up to the UploadRule.

#include <memory>
#include <optional>
#include <string>

#include "files/client_files.h"
#include "ftp/ftp_session.h"
#include "ftp/memory_budget.h"
#include "ftp/upload_rule.h"
#include "net/connection_report.h"
#include "net/task.h"

namespace ModFtp {

/// What became of an attempt to change a file or folder.
struct Change {
  std::string path;  // of the file or folder; empty if the command has none
  net::ActivityEnd end = net::ActivityEnd::kFailed;
  std::string reason = {};  // why a deletion failed; empty if the rule refused it

  bool IsDone() const { return end == net::ActivityEnd::kComplete; }
};

class FileOperations {
 public:
  /// All arguments must outlive this object. `memory` limits what is held of folders being read.
  FileOperations(FtpSessions& sessions, const files::ClientFiles& files, const UploadRule& rule,
                 MemoryBudget& memory)
      : sessions_(sessions), files_(files), rule_(rule), memory_(memory) {}

  /// To be called before each command of a session: one whose client is confined begins at the root
  /// and stays below it.
  void SettleDirectory(int slot);

  /// Does not ask whether the directory exists; fails only where its path would become too long.
  bool ChangeFtpDirectory(int slot, const std::string& text);

  Change MakeFtpDirectory(int slot, const std::string& text);

  /// Done also for a folder that does not exist.
  Change RemoveFtpDirectory(int slot, const std::string& text);

  /// The file name may hold wildcards. Reading a large folder for them suspends.
  net::Task<Change> DeleteFtpFile(int slot, std::string text);

  /// Keeps the path even if it refuses it, and RenameTo uses it: this is how clients move a file
  /// from outside into the upload directory.
  bool RenameFrom(int slot, const std::string& text);
  Change RenameTo(int slot, const std::string& text);

 private:
  std::optional<std::string> PathOf(int slot, const std::string& text, std::size_t position) const;

  FtpSessions& sessions_;
  const files::ClientFiles& files_;
  const UploadRule& rule_;
  MemoryBudget& memory_;
};

}  // namespace ModFtp
