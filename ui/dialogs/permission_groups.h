#pragma once

// The groups of controls by which several dialogs ask what a site or folder permits.

#include "settings/access_rights.h"

class wxCheckBox;
class wxRadioButton;
class wxSizer;
class wxWindow;

namespace ui {

/// Reading, writing, full control.
class RightsGroup {
 public:
  RightsGroup() = default;
  explicit RightsGroup(wxWindow* parent);

  void Set(const settings::AccessRights& rights);
  settings::AccessRights Rights() const;
  wxSizer* Sizer() const { return sizer_; }

  wxCheckBox* chkRead = nullptr;
  wxCheckBox* chkWrite = nullptr;
  wxCheckBox* chkContralAll = nullptr;

 private:
  wxSizer* sizer_ = nullptr;
};

/// Whether programs may run: two options of which at most one is on. Neither may be, as settings
/// files can say so, which a toolkit's group of options does not know: a third one that is never
/// shown stands for it.
class ProgramsGroup {
 public:
  ProgramsGroup() = default;
  ProgramsGroup(wxWindow* parent, const char* nameOfForbidden);

  /// Where both are to be on, the one that allows is.
  void Set(bool areForbidden, bool areAllowed);
  bool AreForbidden() const;
  bool AreAllowed() const;
  wxSizer* Sizer() const { return sizer_; }

  wxRadioButton* forbidden = nullptr;
  wxRadioButton* OptAppDone = nullptr;

 private:
  wxRadioButton* neither_ = nullptr;
  wxSizer* sizer_ = nullptr;
};

}  // namespace ui
