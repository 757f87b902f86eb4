#pragma once

// What is left to do for who has just installed the program, in one row of buttons. A step goes
// away once it is done, however it was done; the row with the last one, or when the user has had
// enough of it.

#include <wx/panel.h>

#include <functional>

#include "ui/controls/card.h"

class wxButton;

namespace ui {

/// Which steps are left.
struct StepsLeft {
  bool putPage = false;       // there is no file in the Web folder
  bool addMailUser = false;   // there is no mailbox
  bool allowUploads = false;  // no folder takes uploads

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

  /// True if something changed: then the parent is to be laid out anew.
  bool ShowSteps(const StepsLeft& left);

  /// Whether the user still wants to see them.
  static bool AreWanted();

 private:
  void Dismiss();

  wxButton* putPage_;
  wxButton* addMailUser_;
  wxButton* allowUploads_;
};

}  // namespace ui
