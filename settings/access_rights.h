#pragma once

// The access rights kept in the settings of the services and of the virtual directory. Only the Web
// server's right to read is ever checked.

#include <array>
#include <string>

#include "settings/change.h"
#include "settings/section.h"

namespace settings {

struct AccessRights {
  bool read = false;
  bool write = false;
  bool controlAll = false;
};

/// Read, write and control all as Server.ini has them.
using AccessRightsTexts = std::array<std::string, 3>;

AccessRightsTexts ReadAccessRights(const Section& settings);

/// A text that is not a Boolean counts as off.
AccessRights ToAccessRights(const AccessRightsTexts& texts);

void WriteAccessRights(const SectionChange& settings, const AccessRights& rights);

}  // namespace settings
