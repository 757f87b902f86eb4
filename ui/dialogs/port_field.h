#pragma once

// Leads the user of an options dialog to the field of a port that has to be changed.

#include <initializer_list>

class wxTextCtrl;

namespace ui {

/// Focuses one of the fields and selects its text: the last that has the port `wrong`, since the
/// first port has been opened before the second fails; else the first that has no usable port; else
/// the first.
void SelectPort(std::initializer_list<wxTextCtrl*> fields, int wrong);

}  // namespace ui
