#pragma once

// The Web server's settings in memory.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/program.h"
#include "settings/settings_table.h"
#include "web/answer_options.h"
#include "web/default_pages.h"

namespace ModWeb {

/// The section of Server.ini.
inline constexpr std::string_view kSettingsSection = "WebServer Options";

/// The key of the main folder.
inline constexpr std::string_view kRootKey = "WebRootDir";

struct WebOptions {
  /// `localAddress`: the listening socket's, taken if Server.ini exists. A value that cannot be
  /// converted is logged as an error and stays as it was. Always true; settingsFault says whether
  /// the settings could be loaded.
  bool LoadWebOptions(const settings::Program& program, const std::string& localAddress);

  /// Sets the values that apply without a Server.ini. The default documents stay.
  void SetDefaults(const settings::Program& program);

  /// The settings that this object holds.
  settings::Table Describe();

  /// What the dialog shows: the values held, but whether programs are forbidden comes from
  /// EnabalExecute.txt, and is true without that file. Allowed programs are not forbidden.
  settings::Entry EntryToShow(const settings::Program& program) const;

  /// Whether files may be read at all. False if the setting is not a Boolean, here and below.
  bool MayRead() const;

  /// Whether CGI programs may run.
  bool MayRunPrograms() const;

  std::string WebRootDir;  // a path text
  std::string WebDomain;
  std::string WebLocalIP;
  std::int16_t WebPort = 80;
  bool StartDefaultPage = true;
  std::array<std::string, 3> WebRights;   // read, write, control all
  std::array<std::string, 2> AppOptions;  // optNoApp, optAppDone
  DefaultPageNames DefaultPages;
  std::string FirstDefaultPage;
  AnswerOptions answers;

  /// Why the existing Server.ini could not be used when it was last loaded. Its settings then kept
  /// their values.
  std::error_code settingsFault;
};

}  // namespace ModWeb
