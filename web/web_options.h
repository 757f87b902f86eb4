#pragma once

// The Web server's settings in memory.

#include <array>
#include <cstdint>
#include <string>
#include <system_error>

#include "settings/access_rights.h"
#include "settings/program.h"

namespace ModWeb {

struct WebOptions {
  /// `localAddress`: the listening socket's own, taken when Server.ini exists. What cannot be
  /// converted is told to the error log and keeps its value. Always true; settingsFault says
  /// whether there were settings to load.
  bool LoadWebOptions(const settings::Program& program, const std::string& localAddress);

  /// What holds while there is no Server.ini; the default documents are left alone.
  void SetDefaults(const settings::Program& program);

  /// Whether files may be read at all. What is neither yes nor no is no.
  bool MayRead() const;

  /// Whether CGI programs may run.
  bool MayRunPrograms() const;

  std::string WebRootDir;  // a path text
  std::string WebDomain;
  std::string WebLocalIP;
  std::int16_t WebPort = 80;
  bool StartDefaultPage = true;
  settings::AccessRightsTexts WebRights;
  std::array<std::string, 2> AppOptions;     // optNoApp, optAppDone
  std::array<std::string, 11> DefaultPages;  // tried in this order, the last one never
  std::string FirstDefaultPage;

  /// Why Server.ini, though it is there, could not be used when it was loaded last: all that it
  /// sets has stayed as it was.
  std::error_code settingsFault;

 private:
  void ReadSettings(const settings::Section& settings, const std::string& localAddress);
  void LoadDefaultPages(const settings::Program& program);
};

}  // namespace ModWeb
