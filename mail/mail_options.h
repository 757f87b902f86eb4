#pragma once

// The mail server's settings in memory.

#include <cstdint>
#include <string>

#include "core/program.h"

namespace ModMail {

struct MailOptions {
  /// `machineAddress`: this machine's own, taken when Server.ini exists. What cannot be converted
  /// is told to the error log and keeps its value.
  void LoadMailOptions(const core::Program& program, const std::string& machineAddress);

  /// What holds while there is no Server.ini.
  void SetDefaults(const core::Program& program);

  std::string mailRoot;  // a path text
  std::string mailDomain;
  std::string localAddress;
  std::int16_t smtpPort = 25;
  std::int16_t pop3Port = 110;

 private:
  void ReadSettings(const core::Program& program, const std::string& machineAddress);
};

}  // namespace ModMail
