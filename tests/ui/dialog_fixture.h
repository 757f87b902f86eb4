#pragma once

// Drives real forms: a script presses their buttons while they are shown, and what opens on top of
// them is answered from a list and kept for the test to look at. For tests that run on the
// toolkit's thread (dialogs_main.cpp).

#include <wx/dialog.h>
#include <wx/modalhook.h>
#include <wx/window.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/server_fixture.h"

namespace test {

/// A message box, an input box, a folder or a file chooser as it was opened.
struct Box {
  std::string kind;  // "message", "text", "folder" or "file"
  std::string title;
  std::string text;      // the message, the prompt; of a file chooser the filter
  std::string proposed;  // what its field holds; of a folder chooser on Windows where it begins
  long style = 0;

  bool HasStyle(long flags) const { return (style & flags) == flags; }
};

class Boxes : public wxModalDialogHook {
 public:
  Boxes() { Register(); }

  /// Closes the next box that is not planned for yet: by the button `button`, with `input` chosen
  /// or typed. A box beyond the plan is cancelled.
  void Plan(int button, std::string input = {}) { plan_.push_back({button, std::move(input)}); }

  const std::vector<Box>& Shown() const { return shown_; }

  /// The one box since the last call; a failed test if it was not one.
  Box TakeOnly();

  /// All boxes since the last call.
  std::vector<Box> Take();

 private:
  struct Answer {
    int button;
    std::string input;
  };

  int Enter(wxDialog* dialog) override;
  bool Record(wxDialog* dialog, const std::string& input);

  std::deque<Answer> plan_;
  std::vector<Box> shown_;
};

class DialogFixture : public ProgramFixture {
 protected:
  static constexpr int kStayedOpen = -77;

  DialogFixture();

  /// Shows the form, runs `script` in it, and returns what it was closed with; kStayedOpen if the
  /// script left it open.
  int Run(wxDialog& form, const std::function<void()>& script);

  /// The window of that name; a failed test if there is none.
  static wxWindow& Find(wxWindow& form, const std::string& name);

  static void Press(wxWindow& form, const std::string& name);
  static void PressEnterIn(wxWindow& form, const std::string& name);
  static void Type(wxWindow& form, const std::string& name, const std::string& text);
  static std::string TextIn(wxWindow& form, const std::string& name);
  /// Ticks a box or picks an option as a click does.
  static void Set(wxWindow& form, const std::string& name, bool on);
  static bool IsSet(wxWindow& form, const std::string& name);
  static std::string FocusedName();

  /// The path of an entry of the program directory as a user writes it.
  std::string UserPath(std::string_view name = "") const;

  Boxes boxes;

 private:
  TemporaryFolder userState_;
};

}  // namespace test
