#pragma once

// Groups of controls that several dialogs use for what a site or folder permits. Their values are
// shown and read by settings_form.h.

class wxCheckBox;
class wxRadioButton;
class wxSizer;
class wxTextCtrl;
class wxWindow;

namespace ui {

/// The tooltip of whatever concerns the virtual directory.
inline constexpr const char* kVirtualDirectoryTip =
    "虚拟目录只会保存在设置里，Web 服务还不会用到它。";

/// Says in its tooltip that the field is saved and has no effect: servers listen on all addresses.
void ExplainAddress(wxTextCtrl& field);

/// Reading, writing, full control, with tooltips that say what each really does.
class RightsGroup {
 public:
  enum class Of { kWeb, kFtp, kVirtualDirectory };

  RightsGroup() = default;
  RightsGroup(wxWindow* parent, Of what);

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
