#pragma once

// The mail server's settings in memory.

#include <cstdint>
#include <string>
#include <system_error>

#include "settings/program.h"
#include "settings/section.h"

namespace ModMail {

struct MailOptions {
  /// `machineAddress`: this machine's own, taken when Server.ini exists. What cannot be converted
  /// is told to the error log and keeps its value.
  void LoadMailOptions(const settings::Program& program, const std::string& machineAddress);

  /// What holds while there is no Server.ini.
  void SetDefaults(const settings::Program& program);

  std::string mailRoot;  // a path text
  std::string mailDomain;
  std::string localAddress;
  std::int16_t smtpPort = 25;
  std::int16_t pop3Port = 110;

  /// Why Server.ini, though it is there, could not be used when it was loaded last: everything has
  /// stayed as it was.
  std::error_code settingsFault;

 private:
  void ReadSettings(const settings::Section& settings, const std::string& machineAddress);
};

}  // namespace ModMail
