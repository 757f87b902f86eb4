#pragma once

// The controls of a dialog that show the settings of a table (settings/settings_table.h): text
// fields, check boxes and options, found by the names that the table gives.

#include "settings/settings_table.h"
#include "ui/controls/message_box.h"

class wxWindow;

namespace ui {

/// Turns the notebooks around a control to it.
void ShowPageOf(const wxWindow& control);

class SettingsForm {
 public:
  /// `title`: of the boxes. The dialog has its controls already, and owns `table`'s values.
  SettingsForm(wxWindow& dialog, settings::Table table, const char* title = kProgramTitle);

  void Show(const settings::Entry& entry) const;

  /// What the controls show now.
  settings::Entry Entered() const;

  /// Whether `entry` cannot be saved. If so, a box tells the user why, and the control gets the
  /// focus, on its page.
  bool IsRefused(const settings::Entry& entry) const;

  const settings::Table& Table() const { return table_; }

 private:
  wxWindow* Find(const char* control) const;

  wxWindow& dialog_;
  settings::Table table_;
  const char* title_;
};

}  // namespace ui
