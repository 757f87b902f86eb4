#pragma once

// Groups of controls that several dialogs use for what a site or folder permits. Their values are
// shown and read by settings_form.h.

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

  wxSizer* Sizer() const { return sizer_; }

  wxCheckBox* chkRead = nullptr;
  wxCheckBox* chkWrite = nullptr;
  wxCheckBox* chkContralAll = nullptr;

 private:
  wxSizer* sizer_ = nullptr;
};

/// Whether programs may run: two options, of which at most one is on. At first neither is, which a
/// settings file may say as well; the toolkit's groups always have one on, so that a third, hidden
/// option represents this.
class ProgramsGroup {
 public:
  ProgramsGroup() = default;
  ProgramsGroup(wxWindow* parent, const char* nameOfForbidden);

  wxSizer* Sizer() const { return sizer_; }

  wxRadioButton* forbidden = nullptr;
  wxRadioButton* OptAppDone = nullptr;

 private:
  wxSizer* sizer_ = nullptr;
};

}  // namespace ui
