#pragma once

// The FTP server's settings in memory.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/program.h"
#include "settings/settings_table.h"

namespace ModFtp {

/// The section of Server.ini.
inline constexpr std::string_view kSettingsSection = "FtpServer Options";

/// The keys of the folders.
inline constexpr std::string_view kRootKey = "FtpServer Root";
inline constexpr std::string_view kUploadDirKey = "FtpServer UploadDir";

struct FtpOptions {
  /// `localAddress`: the listening socket's, taken if Server.ini exists. False if settingsFault is
  /// set, or if the port cannot be converted: then only the root is taken from the file.
  bool LoadFtpOptions(const settings::Program& program, const std::string& localAddress);

  /// Sets the values that apply without a Server.ini. The upload directory stays.
  void SetDefaults(const settings::Program& program);

  /// The settings that this object holds.
  settings::Table Describe();

  /// What the dialog shows: the values held, but of a file whose loading ended at the port also
  /// those after it, so that confirming the dialog does not lose them.
  settings::Entry EntryToShow(const settings::Program& program) const;

  std::string ftpRoot;    // a path text
  std::string uploadDir;  // a path text; empty until a file has set it
  std::string ftpDomain;
  std::string ftpLocalAddress;
  std::int16_t ftpPort = 21;
  std::array<std::string, 3> FtpRights;  // read, write, control all; no command checks them

  /// Why the existing Server.ini could not be used when it was last loaded. All settings then kept
  /// their values.
  std::error_code settingsFault;
};

}  // namespace ModFtp
