#pragma once

// The rights that the settings of a service and of the virtual directory keep. Of them all only the
// Web server's right to read is ever asked for.

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

/// What is no Boolean is off.
AccessRights ToAccessRights(const AccessRightsTexts& texts);

void WriteAccessRights(const SectionChange& settings, const AccessRights& rights);

}  // namespace settings
