#pragma once

// Asks before a file is replaced by one that is copied.

#include <optional>
#include <string>

#include "files/copying.h"

class wxWindow;

namespace ui {

/// What to do about a file that has the place of `path`; none if nothing more is to be copied.
std::optional<files::Copying::Decision> AskToReplace(wxWindow* parent, const std::string& path);

}  // namespace ui
