#pragma once

// The one virtual directory that can be set up. It is kept in Server.ini; no request uses it.

#include <array>
#include <string>

#include "settings/program.h"
#include "settings/settings_table.h"

namespace ModWeb {

struct VirtualDirectory {
  /// Loads the one in Server.ini, or the defaults of a new one if there is none.
  void Load(const settings::Program& program);

  /// The settings that this object holds.
  settings::Table Describe();

  std::string path;                       // in the user's own form
  std::array<std::string, 2> appOptions;  // optNoApp, optAppDone
  std::array<std::string, 3> rights;      // read, write, control all
};

}  // namespace ModWeb
