#pragma once

// Values that a section of Server.ini need not have. An absent key says its default, so a dialog
// writes one only if the file says something else: looking and confirming sets nothing.

#include <span>
#include <string>
#include <string_view>

#include "settings/change.h"
#include "settings/program.h"

namespace settings {

struct OptionalValue {
  std::string_view key;
  std::string byDefault;
  std::string wanted;
};

/// Adds to `change` what the section does not say yet; false if it says it all. Case and blanks at
/// the ends do not count.
bool WriteWhatIsNew(Change& change, const Program& program, std::string_view section,
                    std::span<const OptionalValue> values);

}  // namespace settings
