#pragma once

// Names for those who do not see the window: whatever takes the focus has one that says by itself
// what it is. Most controls have their label; this is for the others.

#include <string>

#include "platform/accessible.h"

class wxWindow;

namespace ui {

using platform::AccessibleRole;

/// `name` begins with what is particular to the control.
void Describe(wxWindow& control, const std::string& name,
              AccessibleRole role = AccessibleRole::kItsOwn, const std::string& description = {});

/// Names every field and list in `window` that has none by the label made before it, one without a
/// label by the heading of its page.
void DescribeFields(wxWindow& window);

}  // namespace ui
