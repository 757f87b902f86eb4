#pragma once

// The commands that change the current directory, and those that change files and folders. Each
// takes its name out of the whole text of the command. Changes are confined to the upload
// directory, by a rule that compares texts (IsInsideUploadDir).

#include <memory>
#include <optional>
#include <string>

#include "ftp/ftp_options.h"
#include "ftp/ftp_session.h"
#include "ftp/memory_budget.h"
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
  FileOperations(FtpSessions& sessions, const FtpOptions& options, MemoryBudget& memory)
      : sessions_(sessions), options_(options), memory_(memory) {}

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
  bool MayChange(const std::string& path) const;
  std::optional<std::string> PathOf(int slot, const std::string& text, std::size_t position) const;

  FtpSessions& sessions_;
  const FtpOptions& options_;
  MemoryBudget& memory_;
};

}  // namespace ModFtp
