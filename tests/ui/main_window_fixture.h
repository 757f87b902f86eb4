#pragma once

// Drives a real main window and its dialogs on the toolkit's thread (forms_main.cpp): over real
// servers on ports that the system chose, in a temporary program directory. Controls go by their
// names, "page/control" where several have one. The fields of a form are written
// "txtPort=80|chkRead=on|optNone=off".

#include <wx/dialog.h>
#include <wx/listctrl.h>
#include <wx/modalhook.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "core/service_control.h"
#include "ftp/ftp_server.h"
#include "mail/mail_server.h"
#include "tests/support/server_fixture.h"
#include "ui/controls/toolkit_text.h"
#include "ui/window/main_window.h"
#include "web/web_server.h"

namespace test {

/// Runs the toolkit's events until `condition` holds; false if it does not within some seconds.
bool Until(const std::function<bool()>& condition);

/// Answers message boxes, questions for a text, choosers of files and folders, and the forms that
/// no script waits for. Keeps a line of each. Boxes are drawn before they are closed; choosers and
/// forms without a script are not.
class Boxes : public wxModalDialogHook {
 public:
  Boxes() { Register(); }

  /// Closes the next box that is not planned for yet with the button `button` after `input` was
  /// chosen or typed. Any box beyond the plan is cancelled.
  void Plan(int button, const std::string& input = "") {
    plan_.emplace_back(button, ui::Shown(input));
  }

  /// Leaves the next form to `script`, which runs in it.
  void ScriptForm(std::function<void(wxDialog&)> script) { script_ = std::move(script); }

  /// The boxes since the last call, a line each. Messages are "!Title: Text" with "!" for a
  /// warning, "?" and "i" for their icons, and " [y/n]" at the end of a question. Other boxes are
  /// "Title: Text [what is proposed]", where the text is a prompt or a filter. Forms are "Title".
  std::string Take() { return std::exchange(shown_, {}); }

 private:
  using Answer = std::pair<int, wxString>;

  int Enter(wxDialog* dialog) override;
  void Exit(wxDialog*) override { drawn_ = nullptr; }

  std::deque<Answer> plan_;
  std::function<void(wxDialog&)> script_;
  std::string shown_;
  wxDialog* drawn_ = nullptr;
};

class MainWindow : public ProgramFixture {
 public:
  ~MainWindow() override;

 protected:
  MainWindow();

  static wxWindow& Find(wxWindow& parent, const std::string& name);
  wxWindow& Find(const std::string& name) { return Find(*window, name); }
  bool IsVisible(const std::string& name) { return Find(name).IsShown(); }
  /// Empty if the control is hidden.
  std::string Label(const std::string& name);
  wxListCtrl& List(const std::string& name) { return dynamic_cast<wxListCtrl&>(Find(name)); }

  static void Press(wxWindow& form, const std::string& button);
  void Push(const std::string& button) { Press(*window, button); }
  /// A click on a control that is no button.
  void Click(const std::string& name);
  bool HasItem(ui::MenuItem item) { return window->GetMenuBar()->FindItem(item) != nullptr; }
  void ChooseItem(ui::MenuItem item);

  /// Types texts, and clicks boxes and options so that they are "on" or "off".
  static void Fill(wxWindow& form, const std::string& fields);
  /// The same fields with what the form shows in them; "grey" for those that are disabled.
  static std::string Contents(wxWindow& form, const std::string& fields);
  static void PressEnterIn(wxWindow& form, const std::string& field);
  static std::string FocusedName();

  /// Presses the button or link `opener`, or chooses "mnuOptions" or "mnuProtection", and runs
  /// `script` in the form that this opens. True if the script closed it.
  bool InForm(const std::string& opener, const std::function<void(wxDialog&)>& script);
  /// Fills the form in and presses its button of that identifier. True if that closed it.
  bool Enter(const std::string& opener, const std::string& fields, int button = wxID_OK);
  void ExpectShown(const std::string& opener, const std::string& fields);

  Boxes boxes;
  TemporaryFolder userState;  // the user's settings and the registry
  ui::frmMain* window = nullptr;
  core::ActivityRecord record;
  ModWeb::WebServer web{Environment()};
  ModFtp::FtpServer ftp{Environment()};
  ModMail::MailServer mail{Environment()};
  std::unique_ptr<core::ServiceControl> control;
  int closed = 0;       // how often the user asked to end the program
  std::string focused;  // when Enter had pressed the button
};

}  // namespace test
