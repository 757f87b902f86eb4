#include "tests/ui/main_window_fixture.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/utils.h>

#include "ui/controls/toolkit_text.h"

namespace test {

MainWindowFixture::MainWindowFixture() {
  Home().Write("Server.ini", "[WebServer Options]\nWebRootDir=" + Home().Path("www").string() +
                                 "\nTCPPort=0\nDNS=home.test\nRead=1\nStartDefaultPage=1\n"
                                 "[FtpServer Options]\nFtpServer Root=" +
                                 Home().Path("ftp").string() +
                                 "\nFtpPort=0\nDNS=home.test\n"
                                 "[MailServer Options]\nMailServer Root=" +
                                 Home().Path("mail").string() +
                                 "\nSMTP Port=0\nPOP3 Port=0\nDNS=home.test\n");
  Home().Write("www/index.htm", "home");
}

MainWindowFixture::~MainWindowFixture() {
  control_.reset();
  mail.reset();
  ftp.reset();
  web.reset();
  if (window_ != nullptr) {
    window_->Destroy();
    wxTheApp->ProcessIdle();  // windows are deleted when the toolkit is idle
  }
}

void MainWindowFixture::MakeWindow() {
  window_ = new ui::frmMain;
  web = std::make_unique<ModWeb::WebServer>(Environment());
  ftp = std::make_unique<ModFtp::FtpServer>(Environment());
  mail = std::make_unique<ModMail::MailServer>(Environment());
  for (core::Service* service :
       {static_cast<core::Service*>(web.get()), static_cast<core::Service*>(ftp.get()),
        static_cast<core::Service*>(mail.get())}) {
    service->LoadOptions();
  }
  control_ = std::make_unique<core::ServiceControl>(
      Program(), core::ServiceControl::Services{*web, *ftp, *mail}, *window_);
  window_->Attach({Program(), *control_, *web, *ftp, *mail}, [this] { ++closed; });
}

bool MainWindowFixture::Until(const std::function<bool()>& condition) {
  constexpr int kTries = 1000;
  wxEventLoop loop;
  const wxEventLoopActivator active(&loop);
  for (int i = 0; i < kTries && !condition(); ++i) {
    while (!condition() && loop.Pending()) loop.Dispatch();
    wxTheApp->ProcessPendingEvents();
    wxTheApp->ProcessIdle();
    wxMilliSleep(10);
  }
  return condition();
}

void MainWindowFixture::Later(const std::function<void()>& action) { wxTheApp->CallAfter(action); }

void MainWindowFixture::Click(const std::string& name) {
  wxWindow& window = Find(Window(), name);
  wxMouseEvent event(wxEVT_LEFT_DOWN);
  event.SetEventObject(&window);
  window.ProcessWindowEvent(event);
}

void MainWindowFixture::ChooseItem(ui::MenuItem item) {
  ASSERT_TRUE(HasItem(item));
  wxCommandEvent event(wxEVT_MENU, item);
  event.SetEventObject(&Window());
  Window().ProcessWindowEvent(event);
}

bool MainWindowFixture::HasItem(ui::MenuItem item) {
  return Window().GetMenuBar()->FindItem(item) != nullptr;
}

std::string MainWindowFixture::Label(const std::string& name) {
  return ui::Typed(Find(Window(), name).GetLabel());
}

std::string MainWindowFixture::Page() {
  std::string page;
  for (const char* name : {"fraWelcome", "fraWeb", "fraFtp", "fraMail"}) {
    if (IsVisible(name)) page += name;
  }
  return page;
}

}  // namespace test
