#pragma once

// The FTP server's settings in memory.

#include <cstdint>
#include <string>
#include <system_error>

#include "settings/access_rights.h"
#include "settings/program.h"

namespace ModFtp {

struct FtpOptions {
  /// `localAddress`: the listening socket's own, taken when Server.ini exists. False at a port that
  /// cannot be converted: the settings behind it keep their values; and where settingsFault is set.
  bool LoadFtpOptions(const settings::Program& program, const std::string& localAddress);

  /// What holds while there is no Server.ini; the upload directory is left alone.
  void SetDefaults(const settings::Program& program);

  std::string ftpRoot;    // a path text
  std::string uploadDir;  // a path text; empty until a file has set it
  std::string ftpDomain;
  std::string ftpLocalAddress;
  std::int16_t ftpPort = 21;
  settings::AccessRightsTexts FtpRights;  // no command asks them

  /// Why Server.ini, though it is there, could not be used when it was loaded last: everything has
  /// stayed as it was.
  std::error_code settingsFault;

 private:
  bool ReadSettings(const settings::Section& settings, const std::string& localAddress);
};

}  // namespace ModFtp
