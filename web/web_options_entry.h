#pragma once

// The Web server's options as a user enters them: texts as typed, to be checked and written. What
// is written takes effect when the options are loaded next (web/web_options.h).

#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "settings/change.h"
#include "settings/program.h"
#include "web/web_options.h"

namespace ModWeb {

struct WebOptionsEntry {
  std::string rootDir;  // in the user's own form
  std::string localIP;
  std::string port;
  std::string domain;
  bool startDefaultPage = true;
  settings::AccessRights rights;
  bool noPrograms = false;
  bool programs = false;
  std::vector<std::string> documents;
};

enum class WebOptionsFault { kNoPort, kNoDomain, kNoRoot };

/// What is held in memory.
WebOptionsEntry EntryOf(const WebOptions& options);

/// What a user is shown. As EntryOf, but that programs are not to run is asked of EnabalExecute.txt
/// and holds where there is no such file; that they are to run overrules it.
WebOptionsEntry EntryToShow(const settings::Program& program, const WebOptions& options);

/// The first thing that keeps `entry` from being saved. Blanks are no port and no root, but may be
/// a domain.
std::optional<WebOptionsFault> FindFault(const WebOptionsEntry& entry);

/// Puts every key into a change of Server.ini.
void WriteSettings(settings::Change& change, const WebOptionsEntry& entry);

/// Writes IndexFN.Log anew in one replacement, one document per line. Without documents there is no
/// such file.
std::error_code SaveDefaultPages(const settings::Program& program,
                                 const std::vector<std::string>& documents);

}  // namespace ModWeb
