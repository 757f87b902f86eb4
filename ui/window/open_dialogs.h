#pragma once

// Knows which modal dialogs are open, the toolkit's and the system's, and dismisses them all when
// the program is asked to end while the user is in the middle of something.

#include <wx/modalhook.h>
#include <wx/timer.h>

#include <functional>
#include <vector>

namespace ui {

class OpenDialogs : private wxModalDialogHook {
 public:
  OpenDialogs() { Register(); }

  /// Answers every dialog with its refusal, lets none open any more, and calls `done` from the
  /// outermost loop once the last one has returned.
  void DismissAll(std::function<void()> done);

 private:
  int Enter(wxDialog* dialog) override;
  void Exit(wxDialog* dialog) override;
  void DismissNext();

  std::vector<wxDialog*> open_;
  std::function<void()> done_;
  wxTimer timer_;
};

}  // namespace ui
