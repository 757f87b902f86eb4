#pragma once

// Tracks the open modal dialogs, the toolkit's and the system's, and dismisses them all when the
// program is asked to end meanwhile.

#include <wx/modalhook.h>
#include <wx/timer.h>

#include <functional>
#include <vector>

namespace ui {

class OpenDialogs : private wxModalDialogHook {
 public:
  OpenDialogs() { Register(); }

  /// Cancels every dialog, prevents new ones, and calls `done` from the outermost loop once the
  /// last has returned.
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
