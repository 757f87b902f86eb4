#pragma once

// The mail server's settings in memory.

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/program.h"
#include "settings/settings_table.h"

namespace ModMail {

/// The section of Server.ini, and the key of the mail root.
inline constexpr std::string_view kSettingsSection = "MailServer Options";
inline constexpr std::string_view kMailRootKey = "MailServer Root";

struct MailOptions {
  /// `machineAddress`: this machine's, taken if Server.ini exists. A value that cannot be converted
  /// is logged as an error and stays as it was.
  void LoadMailOptions(const settings::Program& program, const std::string& machineAddress);

  /// Loads the mail root alone, if none is set yet.
  void EnsureMailRoot(const settings::Program& program);

  /// Sets the values that apply without a Server.ini.
  void SetDefaults(const settings::Program& program);

  /// The settings that this object holds.
  settings::Table Describe();

  std::string mailRoot;  // a path text
  std::string mailDomain;
  std::string localAddress;
  std::int16_t smtpPort = 25;
  std::int16_t pop3Port = 110;

  /// Why the existing Server.ini could not be used when it was last loaded. All settings then kept
  /// their values.
  std::error_code settingsFault;
};

}  // namespace ModMail
