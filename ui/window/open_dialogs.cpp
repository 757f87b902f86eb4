#include "ui/window/open_dialogs.h"

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>

#include <algorithm>
#include <utility>

#include "platform/modal_windows.h"

namespace ui {
namespace {

// Each dialog must return before the one below it can be dismissed.
constexpr int kPause = 20;  // milliseconds

}  // namespace

void OpenDialogs::DismissAll(std::function<void()> done) {
  if (done_) return;
  done_ = std::move(done);
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { DismissNext(); });
  timer_.Start(kPause);
  DismissNext();
}

int OpenDialogs::Enter(wxDialog* dialog) {
  if (done_) return wxID_CANCEL;
  open_.push_back(dialog);
  onChange_();
  return wxID_NONE;
}

void OpenDialogs::Exit(wxDialog* dialog) {
  std::erase(open_, dialog);
  onChange_();
}

void OpenDialogs::Raise() {
  if (wxDialog* dialog = Innermost()) dialog->Raise();
}

void OpenDialogs::DismissNext() {
  if (open_.empty()) {
    platform::DismissModalWindow();  // a menu, perhaps
    timer_.Stop();
    done_();
  } else if (wxDialog* innermost = open_.back(); innermost->IsModal()) {
    innermost->EndModal(wxID_CANCEL);
  } else {
    platform::DismissModalWindow();
  }
}

}  // namespace ui
