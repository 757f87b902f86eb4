#pragma once

// Accessible names: with a screen reader, everything that takes the focus must say what it is. Most
// controls have their label as a name; this is for the others.

#include <string>

#include "platform/accessible.h"

class wxWindow;

namespace ui {

using platform::AccessibleRole;

/// `name` should begin with what distinguishes the control.
void Describe(wxWindow& control, const std::string& name,
              AccessibleRole role = AccessibleRole::kItsOwn, const std::string& description = {});

/// Names every unlabelled field and list in `window` after the label created before it, or after
/// the heading of its page if there is none.
void DescribeFields(wxWindow& window);

}  // namespace ui
