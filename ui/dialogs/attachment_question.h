#pragma once

#include <string>

class wxWindow;

namespace ui {

/// Whether an attachment of that name may be opened. Asks about all that are not known to be
/// harmless.
bool MayOpenAttachment(wxWindow* parent, const std::string& name);

}  // namespace ui
