#pragma once

// A main window over real servers on ports that the system chose, in a temporary program directory.

#include <memory>
#include <string>

#include "core/service_control.h"
#include "tests/ui/dialog_fixture.h"
#include "ui/window/main_window.h"

namespace test {

class MainWindowFixture : public DialogFixture {
 protected:
  MainWindowFixture();
  ~MainWindowFixture() override;

  /// Makes the window. Settings and files are written before it.
  void MakeWindow();
  ui::frmMain& Window() { return *window_; }

  /// Runs the toolkit's events until `condition` holds; false if it does not within some seconds.
  static bool Until(const std::function<bool()>& condition);

  /// Runs `action` as an event of its own, inside whatever modal loop runs then.
  static void Later(const std::function<void()>& action);

  /// A click on a control that is no button.
  void Click(const std::string& name);
  void ChooseItem(ui::MenuItem item);
  bool HasItem(ui::MenuItem item);
  void Push(const std::string& name) { Press(Window(), name); }
  std::string Label(const std::string& name);
  bool IsVisible(const std::string& name) { return Find(Window(), name).IsShown(); }
  /// The one page that is shown.
  std::string Page();

  std::unique_ptr<ModWeb::WebServer> web;
  std::unique_ptr<ModFtp::FtpServer> ftp;
  std::unique_ptr<ModMail::MailServer> mail;
  int closed = 0;  // how often the user asked to end the program

 private:
  std::unique_ptr<core::ServiceControl> control_;
  ui::frmMain* window_ = nullptr;
};

}  // namespace test
