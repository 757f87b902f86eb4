#pragma once

// The one virtual directory that can be set up. It is kept in Server.ini; no request asks for it.

#include <string>
#include <system_error>

#include "settings/access_rights.h"
#include "settings/program.h"

namespace ModWeb {

struct VirtualDirectory {
  std::string path;  // in the user's own form
  bool noPrograms = true;
  bool programs = false;
  settings::AccessRights rights = {.read = true};
};

/// The one in Server.ini; a fresh one if there is none.
VirtualDirectory ReadVirtualDirectory(const settings::Program& program);

/// Replaces the one in Server.ini. The path is trimmed.
std::error_code SaveVirtualDirectory(const settings::Program& program,
                                     const VirtualDirectory& directory);

}  // namespace ModWeb
