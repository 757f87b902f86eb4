#pragma once

// How far strangers are trusted, as four questions (core/protection.h). Opening it loads the
// settings anew; what is confirmed holds at once, for running services too. Confirming what nobody
// has changed writes nothing.

#include <wx/dialog.h>

#include <optional>

#include "core/protection_options.h"
#include "settings/program.h"

class wxButton;
class wxCheckBox;
class wxRadioButton;
class wxTextCtrl;

namespace core {
class Protection;
}

namespace ui {

class Column;

class frmProtection : public wxDialog {
 public:
  frmProtection(wxWindow* parent, const settings::Program& program, core::Protection& protection);

  wxRadioButton* optAll;
  wxRadioButton* optLan;
  wxRadioButton* optLocal;
  wxCheckBox* chkConfine;
  wxCheckBox* chkFollowLinks;  // grey without chkConfine
  wxCheckBox* chkSignIn;
  wxCheckBox* chkHonest;
  wxTextCtrl* txtMessageLimit;  // in MiB; grey without chkHonest
  wxButton* cmdRecommended;
  wxButton* cmdOK;
  wxButton* cmdCancel;

 private:
  wxSizer* MakeReach();
  wxSizer* MakeRights();
  void MakeMessageLimit(wxWindow* parent, Column& column);
  void ShowOptions(const core::ProtectionOptions& options);
  void Recommend();
  void EnableParts();
  core::ProtectionOptions::Reach EnteredReach() const;
  /// None if the limit is no usable number; the user has been told.
  std::optional<core::ProtectionOptions> Entered();
  void OnConfirm();

  const settings::Program& program_;
  core::Protection& protection_;
};

}  // namespace ui
