#pragma once

// Tracks the open modal dialogs, the toolkit's and the system's: brings them to the front when the
// user looks for the program, and dismisses them all when it is asked to end meanwhile.

#include <wx/modalhook.h>
#include <wx/timer.h>

#include <functional>
#include <utility>
#include <vector>

namespace ui {

class OpenDialogs : private wxModalDialogHook {
 public:
  /// `onChange` is called when a dialog opens and when one has closed.
  explicit OpenDialogs(std::function<void()> onChange) : onChange_(std::move(onChange)) {
    Register();
  }

  /// Null if none is open.
  wxDialog* Innermost() const { return open_.empty() ? nullptr : open_.back(); }

  /// Brings the innermost dialog to the front, even if it was hidden with its window.
  void Raise();

  /// Cancels every dialog, prevents new ones, and calls `done` from the outermost loop once the
  /// last has returned.
  void DismissAll(std::function<void()> done);

 private:
  int Enter(wxDialog* dialog) override;
  void Exit(wxDialog* dialog) override;
  void DismissNext();

  std::function<void()> onChange_;
  std::vector<wxDialog*> open_;
  std::function<void()> done_;
  wxTimer timer_;
};

}  // namespace ui
