#pragma once

// The remaining steps after an installation, as a row of buttons. A step disappears once it is
// done, in whatever way; the row disappears with the last step, or when the user dismisses it.

#include <wx/panel.h>

#include <functional>

#include "ui/controls/card.h"

class wxBoxSizer;
class wxButton;

namespace ui {

/// Which steps are left.
struct StepsLeft {
  bool putPage = false;       // the Web folder has no files
  bool addMailUser = false;   // there is no mailbox
  bool allowUploads = false;  // no folder accepts uploads

  bool Any() const { return putPage || addMailUser || allowUploads; }
};

class FirstSteps : public Card {
 public:
  struct Actions {
    std::function<void()> putPage;
    std::function<void()> addMailUser;
    std::function<void()> allowUploads;
  };

  FirstSteps(wxWindow* parent, const Actions& actions);

  /// True if something changed and the parent must be laid out again.
  bool ShowSteps(const StepsLeft& left);

  /// Uses two lines if one would be wider than `width` pixels.
  void FitInto(int width);

  /// False once the user has dismissed the steps.
  static bool AreWanted();

 private:
  void Dismiss();

  wxBoxSizer* parts_;
  wxButton* putPage_;
  wxButton* addMailUser_;
  wxButton* allowUploads_;
};

}  // namespace ui
