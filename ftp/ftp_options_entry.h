#pragma once

// The FTP server's options as a user enters them: texts as typed, to be checked and written. What
// is written takes effect when the options are loaded next (ftp/ftp_options.h).

#include <optional>
#include <string>

#include "ftp/ftp_options.h"
#include "settings/change.h"

namespace ModFtp {

struct FtpOptionsEntry {
  std::string localIP;
  std::string port;  // not checked: what is no port is found when it is loaded
  std::string domain;
  std::string root;       // in the user's own form
  std::string uploadDir;  // in the user's own form
  settings::AccessRights rights;
};

enum class FtpOptionsFault { kNoDomain, kNoRoot, kNoUploadDir };

/// What is held in memory.
FtpOptionsEntry EntryOf(const FtpOptions& options);

/// The first thing that keeps `entry` from being saved. Blanks are nothing.
std::optional<FtpOptionsFault> FindFault(const FtpOptionsEntry& entry);

/// Puts every key into a change of Server.ini.
void WriteSettings(settings::Change& change, const FtpOptionsEntry& entry);

}  // namespace ModFtp
