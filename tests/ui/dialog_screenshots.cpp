// Opens each dialog as a user would find it and keeps a picture of it: dialog_screenshots FOLDER.
// Not a test: the pictures are to be looked at. Takes them with ImageMagick's "import".

#include <wx/bookctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <cstdio>
#include <functional>
#include <string>

#include "core/service_environment.h"
#include "net/window_loop.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/toolkit_start.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/domain_questions.h"
#include "ui/dialogs/ftp_options_dialog.h"
#include "ui/dialogs/login_dialog.h"
#include "ui/dialogs/mail_options_dialog.h"
#include "ui/dialogs/mail_user_dialog.h"
#include "ui/dialogs/options_dialog.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/virtual_directory_dialog.h"
#include "ui/dialogs/web_options_dialog.h"

namespace {

constexpr int kSettling = 700;  // milliseconds until everything is drawn

class Photographer {
 public:
  explicit Photographer(wxString folder) : folder_(std::move(folder)) {}

  void Take(wxDialog& dialog, const std::string& name) {
    dialog.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
      Save(dialog, name);
      dialog.EndModal(wxID_CANCEL);
    });
    wxTimer timer(&dialog);
    timer.StartOnce(kSettling);
    dialog.ShowModal();
  }

  /// The same of what `open` opens and waits for.
  void TakeWhatOpens(const std::function<void()>& open, const std::string& name) {
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
      wxShell("import -window root " + folder_ + "/" + name + ".png");
      for (wxWindow* window : wxTopLevelWindows) {
        auto* dialog = dynamic_cast<wxDialog*>(window);
        if (dialog != nullptr && dialog->IsModal()) dialog->EndModal(wxID_CANCEL);
      }
    });
    timer.StartOnce(2 * kSettling);
    open();
  }

  /// A picture of each page.
  void TakePages(wxDialog& dialog, const std::string& name) {
    auto* book = dynamic_cast<wxBookCtrlBase*>(dialog.GetChildren().front());
    for (std::size_t page = 0; page < book->GetPageCount(); ++page) {
      book->SetSelection(page);
      Take(dialog, name + "-" + std::to_string(page + 1));
    }
  }

 private:
  void Save(wxDialog& dialog, const std::string& name) {
    const wxRect area = dialog.GetScreenRect();
    const double scale = dialog.GetContentScaleFactor();  // the system's pixels are smaller ones
    const auto pixels = [scale](int value) { return static_cast<int>(scale * value); };
    const wxString part = wxString::Format("%dx%d+%d+%d", pixels(area.width), pixels(area.height),
                                           pixels(area.x), pixels(area.y));
    wxShell("import -window root -crop " + part + " +repage " + folder_ + "/" + name + ".png");
  }

  wxString folder_;
};

void TakeAll(Photographer photographer, const test::TemporaryFolder& home) {
  const settings::Program program(home.Text(), "Tarnwerk");
  net::WindowLoop loop;
  const core::ServiceEnvironment environment{program, loop.Events(), home.Text("hosts")};
  ModWeb::WebServer web(environment);
  ModFtp::FtpServer ftp(environment);
  ModMail::MailServer mail(environment);

  ui::frmWebOptions webOptions(nullptr, program, web);
  photographer.TakePages(webOptions, "web-options");
  ui::frmMailOptions mailOptions(nullptr, program, mail);
  photographer.TakePages(mailOptions, "mail-options");
  ui::frmFtpOptions ftpOptions(nullptr, program, ftp);
  photographer.Take(ftpOptions, "ftp-options");
  ui::frmEditDir directory(nullptr, program);
  photographer.Take(directory, "virtual-directory");
  ui::frmEmailUsers user(nullptr, program, mail);
  user.txtUser->ChangeValue(ui::Shown("张三"));
  user.txtPass->ChangeValue("secret");
  photographer.Take(user, "mail-user");
  ui::frmOptions options(nullptr, program);
  photographer.Take(options, "options");
  ui::frmPassWord login(nullptr, program);
  login.lblMsg->Show();
  photographer.Take(login, "login");
  photographer.TakeWhatOpens([&] { ui::AskDomain(nullptr, program, core::ServiceKind::kWeb); },
                             "question");
  photographer.TakeWhatOpens([&] { ui::ChooseFolder(nullptr, "选择Web服务器的主目录"); }, "folder");
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::puts("usage: dialog_screenshots FOLDER");
    return 2;
  }
  if (!test::StartToolkit(arguments)) return 1;
  {
    const test::TemporaryFolder home;
    std::string lines;
    for (int i = 10; i < 40; ++i) {
      lines += "时间：2026-11-15 14:30:" + std::to_string(i) +
               "  客户机IP：127.0.0.1  请求方法：GET  请求资源：/index.htm  Success!\r\n";
    }
    home.Write("Web.log", lines);
    for (int i = 0; i < 20000; ++i)
      lines += "时间：2026-11-15 14:31:00  客户机IP：127.0.0.1  收到邮件(SMTP)  Success!\r\n";
    home.Write("Mail.log", lines);
    TakeAll(Photographer(arguments[1]), home);
  }
  wxEntryCleanup();
  return 0;
}
