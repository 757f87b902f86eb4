#pragma once

// The names of the default documents, kept in IndexFN.Log, one per line.

#include <array>
#include <string>
#include <system_error>
#include <vector>

#include "settings/program.h"

namespace ModWeb {

using DefaultPageNames = std::array<std::string, 11>;  // tried in this order, the last one never

/// Reads the file. Names beyond its last line stay; without the file, the first two are set.
void LoadDefaultPages(const settings::Program& program, DefaultPageNames& names);

/// Replaces the file, or removes it if there are no names.
std::error_code SaveDefaultPages(const settings::Program& program,
                                 const std::vector<std::string>& names);

}  // namespace ModWeb
