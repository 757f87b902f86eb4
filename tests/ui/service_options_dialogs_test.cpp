// The options dialogs of the three services: what they do alike, each with its own fields and
// texts.

#include <wx/filedlg.h>

#include <memory>
#include <utility>

#include "platform/native_path.h"
#include "tests/ui/dialog_fixture.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/ftp_options_dialog.h"
#include "ui/dialogs/mail_options_dialog.h"
#include "ui/dialogs/web_options_dialog.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using Texts = std::vector<std::pair<const char*, const char*>>;

struct Servers {
  ModWeb::WebServer web;
  ModFtp::FtpServer ftp;
  ModMail::MailServer mail;
};

struct Refusal {
  const char* field;
  const char* message;
  long icon = wxICON_EXCLAMATION;
  const char* blank = "  ";
};

struct Chooser {
  const char* button;
  const char* title;
  const char* field;
};

struct DialogCase {
  const char* name;
  std::unique_ptr<wxDialog> (*make)(const settings::Program& program, Servers& servers);
  core::Service& (*service)(Servers& servers);
  int (*port)(const Servers& servers);
  const char* settings;    // are loaded
  const char* overtaking;  // then replace them in the file, before the dialog is opened
  Texts shown;
  std::vector<std::pair<const char*, bool>> shownTicks;
  const char* boxTitle;
  std::vector<Refusal> refusals;  // in their order
  std::vector<Chooser> choosers;
  Texts typed;
  std::vector<std::pair<const char*, bool>> ticked;
  const char* written;
  const char* rootTakenOver;  // in memory, at once; or null
  const char* log;            // or null
};

const DialogCase kWeb = {
    .name = "Web",
    .make = [](const settings::Program& program, Servers& servers) -> std::unique_ptr<wxDialog> {
      return std::make_unique<ui::frmWebOptions>(nullptr, program, servers.web);
    },
    .service = [](Servers& servers) -> core::Service& { return servers.web; },
    .port = [](const Servers& servers) -> int { return servers.web.Options().WebPort; },
    .settings =
        "[WebServer Options]\nWebRootDir=/srv/old\nTCPPort=80\nDNS=old\nStartDefaultPage=0\n",
    .overtaking =
        "[WebServer Options]\nWebRootDir=/srv/网站\nTCPPort=8080\nDNS=x.example\n"
        "StartDefaultPage=1\nRead=True\nWrite=0\nContralAll=1\n",
    .shown = {{"txtWebRoot", "/srv/网站"}, {"txtWebPort", "8080"}, {"txtWebAddress", "x.example"}},
    .shownTicks = {{"chkRead", true},
                   {"chkWrite", false},
                   {"chkContralAll", true},
                   {"chkDefaultFile", true}},
    .boxTitle = "Tarnwerk",
    .refusals = {{"txtWebPort", "请指定TCP端口！"},
                 {"txtWebAddress", "请指定本地域名", wxICON_INFORMATION, ""},
                 {"txtWebRoot", "请指定WEB主目录！"}},
    .choosers = {{"cmdBrowser", "选择Web服务器的主目录", "txtWebRoot"}},
    .typed = {{"txtWebRoot", "  /srv/www"},
              {"txtWebIP", "192.0.2.1"},
              {"txtWebPort", " 8o8o"},
              {"txtWebAddress", "y.example"}},
    .ticked = {{"chkDefaultFile", false}, {"chkWrite", true}, {"optAppNone", true}},
    .written =
        "[WebServer Options]\r\nWebRootDir=  /srv/www\r\nWebServerIP=192.0.2.1\r\n"
        "TCPPort= 8o8o\r\nDNS=y.example\r\nStartDefaultPage=0\r\nRead=1\r\nWrite=1\r\n"
        "ContralAll=1\r\noptNoApp=True\r\noptAppDone=False\r\n",
    .rootTakenOver = nullptr,
    .log = "Web.log",
};

const DialogCase kFtp = {
    .name = "Ftp",
    .make = [](const settings::Program& program, Servers& servers) -> std::unique_ptr<wxDialog> {
      return std::make_unique<ui::frmFtpOptions>(nullptr, program, servers.ftp);
    },
    .service = [](Servers& servers) -> core::Service& { return servers.ftp; },
    .port = [](const Servers& servers) -> int { return servers.ftp.Options().ftpPort; },
    .settings =
        "[FtpServer Options]\nFtpPort=2121\nDNS=f.example\nFtpServer Root=/srv/ftp\n"
        "FtpServer UploadDir=/srv/ftp/up\nRead=1\nWrite=0\nContralAll=1\n",
    .overtaking = "[FtpServer Options]\nFtpPort=9\n",
    .shown = {{"txtFtpPort", "2121"},
              {"txtFtpAddress", "f.example"},
              {"txtFtpDir", "/srv/ftp"},
              {"txtFtpUploadDir", "/srv/ftp/up"}},
    .shownTicks = {{"chkRead", true}, {"chkWrite", false}, {"chkContralAll", true}},
    .boxTitle = "Ftp服务器选项",
    .refusals = {{"txtFtpAddress", "本地域名不能为空！"},
                 {"txtFtpDir", "主目录不能为空！"},
                 {"txtFtpUploadDir", "上传目录不能为空！"}},
    .choosers = {{"cmdBrowser", "请选择FTP的站点位置", "txtFtpDir"},
                 {"cmdBrower2", "请选择FTP站点文件上传的位置", "txtFtpUploadDir"}},
    .typed = {{"txtFtpIP", "192.0.2.1"},
              {"txtFtpPort", "no port"},
              {"txtFtpAddress", " g.example"},
              {"txtFtpDir", "/srv"},
              {"txtFtpUploadDir", "/srv/上传"}},
    .ticked = {{"chkRead", false}, {"chkWrite", true}},
    .written =
        "[FtpServer Options]\r\nIP=192.0.2.1\r\nFtpPort=no port\r\nDNS= g.example\r\n"
        "FtpServer Root=/srv\r\nFtpServer UploadDir=/srv/上传\r\nRead=0\r\nWrite=1\r\n"
        "ContralAll=1\r\n",
    .rootTakenOver = nullptr,
    .log = nullptr,
};

const DialogCase kMail = {
    .name = "Mail",
    .make = [](const settings::Program& program, Servers& servers) -> std::unique_ptr<wxDialog> {
      return std::make_unique<ui::frmMailOptions>(nullptr, program, servers.mail);
    },
    .service = [](Servers& servers) -> core::Service& { return servers.mail; },
    .port = [](const Servers& servers) -> int { return servers.mail.Options().smtpPort; },
    .settings = "[MailServer Options]\nSMTP Port=25\nPOP3 Port=110\nDNS=old\n",
    .overtaking =
        "[MailServer Options]\nSMTP Port=2525\nPOP3 Port=1110\nDNS=m.example\n"
        "MailServer Root=/srv/mail\n",
    .shown = {{"txtSMTPPort", "2525"},
              {"txtPop3Port", "1110"},
              {"txtMailAddress", "m.example"},
              {"txtMailRootDir", "/srv/mail"}},
    .shownTicks = {},
    .boxTitle = "E-Mail服务器选项",
    .refusals = {{"txtMailAddress", "本地域名不能为空！"}, {"txtMailRootDir", "主目录不能为空！"}},
    .choosers = {{"cmdBrowser", "选择Email服务器内容的存放目录", "txtMailRootDir"}},
    .typed = {{"txtMailIP", " 192.0.2.1 "},
              {"txtSMTPPort", " 2526"},
              {"txtPop3Port", "1111 "},
              {"txtMailAddress", " n.example"},
              {"txtMailRootDir", " /srv/邮件 "}},
    .ticked = {},
    .written =
        "[MailServer Options]\r\nIP=192.0.2.1\r\nSMTP port=2526\r\nPOP3 Port=1111\r\n"
        "DNS=n.example\r\nMailServer Root=/srv/邮件\r\n",
    .rootTakenOver = "/srv/邮件",
    .log = "Mail.log",
};

class OptionsOf : public test::DialogFixture,
                  public testing::WithParamInterface<const DialogCase*> {
 protected:
  // With the settings that overtook the loaded ones.
  wxDialog& Open() {
    Home().Write("Server.ini", Case().settings);
    Service().LoadOptions();
    Home().Write("Server.ini", Case().overtaking);
    form_ = Case().make(Program(), servers_);
    return *form_;
  }
  const DialogCase& Case() const { return *GetParam(); }
  core::Service& Service() { return Case().service(servers_); }

  Servers servers_{ModWeb::WebServer(Environment()), ModFtp::FtpServer(Environment()),
                   ModMail::MailServer(Environment())};
  std::unique_ptr<wxDialog> form_;
};

TEST_P(OptionsOf, ShowTheSettings) {
  wxDialog& form = Open();
  for (const auto& [field, text] : Case().shown) EXPECT_EQ(TextIn(form, field), text) << field;
  for (const auto& [box, on] : Case().shownTicks) EXPECT_EQ(IsSet(form, box), on) << box;
}

TEST_P(OptionsOf, RefuseBlankFieldsInTheirOrderAndWriteNothing) {
  wxDialog& form = Open();
  const std::string root = Service().RootDir();
  Home().Write("IndexFN.Log", "a.htm\r\n");
  const int result = Run(form, [&] {
    for (const Refusal& refusal : Case().refusals) Type(form, refusal.field, refusal.blank);
    for (const Refusal& refusal : Case().refusals) {
      Press(form, "cmdOK");
      const test::Box box = boxes.TakeOnly();
      EXPECT_EQ(box.text, refusal.message);
      EXPECT_EQ(box.title, Case().boxTitle);
      EXPECT_EQ(box.style & wxICON_MASK, refusal.icon);
      EXPECT_EQ(FocusedName(), refusal.field);
      Type(form, refusal.field, "x");
    }
  });
  EXPECT_EQ(result, kStayedOpen);
  EXPECT_EQ(Home().Read("Server.ini"), Case().overtaking);
  EXPECT_EQ(Home().Read("IndexFN.Log"), "a.htm\r\n");
  EXPECT_EQ(Service().RootDir(), root);
}

TEST_P(OptionsOf, WriteTheirKeysInOrder) {
  wxDialog& form = Open();
  const int port = Case().port(servers_);
  const std::string domain = Service().Domain();
  const std::string root = Case().rootTakenOver == nullptr
                               ? Service().RootDir()
                               : platform::PathTextFromUser(Case().rootTakenOver);
  Home().Write("Server.ini", "");
  const int result = Run(form, [&] {
    for (const auto& [field, text] : Case().typed) Type(form, field, text);
    for (const auto& [box, on] : Case().ticked) Set(form, box, on);
    Press(form, "cmdOK");
  });
  EXPECT_EQ(result, wxID_OK);
  EXPECT_EQ(Home().Read("Server.ini"), Case().written);
  // What runs goes on as it is.
  EXPECT_EQ(Case().port(servers_), port);
  EXPECT_EQ(Service().Domain(), domain);
  EXPECT_EQ(Service().RootDir(), root);
}

TEST_P(OptionsOf, WriteNothingWhenCancelled) {
  wxDialog& form = Open();
  const int result = Run(form, [&] {
    for (const auto& [field, text] : Case().typed) Type(form, field, text);
    Press(form, "cmdCancel");
  });
  EXPECT_EQ(result, wxID_CANCEL);
  EXPECT_EQ(Home().Read("Server.ini"), Case().overtaking);
}

TEST_P(OptionsOf, TakeFoldersFromAChooser) {
  wxDialog& form = Open();
  for (const Chooser& chooser : Case().choosers) {
    const std::string before = TextIn(form, chooser.field);
    boxes.Plan(wxID_CANCEL, UserPath());
    Press(form, chooser.button);
    EXPECT_EQ(TextIn(form, chooser.field), before);
    const test::Box box = boxes.TakeOnly();
    EXPECT_EQ(box.kind, "folder");
    EXPECT_EQ(box.title, chooser.title);
    EXPECT_EQ(box.proposed, "");
    boxes.Plan(wxID_OK, UserPath());
    Press(form, chooser.button);
    boxes.TakeOnly();
    EXPECT_EQ(TextIn(form, chooser.field), UserPath());
  }
}

TEST_P(OptionsOf, ExportAndClearTheirLog) {
  if (Case().log == nullptr) return;
  Home().Write(Case().log, "收到一\r\n收到二");
  Home().Write("old.txt", "much longer than what is written over it");
  wxDialog& form = Open();
  auto& list = dynamic_cast<wxListCtrl&>(Find(form, "lstLog"));
  ASSERT_EQ(list.GetItemCount(), 2);
  EXPECT_EQ(ui::Typed(list.GetItemText(1)), "收到二");
  EXPECT_FALSE(Find(form, "lblLogPart").IsShown());
  boxes.Plan(wxID_CANCEL, UserPath("new.txt"));
  Press(form, "cmdExportLog");
  EXPECT_FALSE(Home().Has("new.txt"));
  const test::Box box = boxes.TakeOnly();
  EXPECT_EQ(box.kind, "file");
  EXPECT_EQ(box.title, "导出日志");
  EXPECT_EQ(box.text, "LOG文件(*.log)|*.log|文本文件(*.txt)|*.txt|所有文件(*.*)|*.*");
  EXPECT_EQ(box.proposed, "");
  EXPECT_TRUE(box.HasStyle(wxFD_SAVE | wxFD_OVERWRITE_PROMPT));
  boxes.Plan(wxID_OK, UserPath("old.txt"));
  Press(form, "cmdExportLog");
  boxes.TakeOnly();
  EXPECT_EQ(Home().Read("old.txt"), "收到一\r\n收到二\r\n");

  Press(form, "cmdClearLog");
  EXPECT_EQ(list.GetItemCount(), 0);
  EXPECT_FALSE(Home().Has(Case().log));
  Press(form, "cmdExportLog");
  EXPECT_THAT(boxes.Take(), IsEmpty()) << "an empty list is not exported";
}

INSTANTIATE_TEST_SUITE_P(Service, OptionsOf, testing::Values(&kWeb, &kFtp, &kMail),
                         [](const auto& tested) { return std::string(tested.param->name); });

class LargeLog : public test::DialogFixture {};

TEST_F(LargeLog, IsShownInItsLastPartAndExportedWhole) {
  std::string log;
  for (int i = 0; i < 100000; ++i) log += "收到邮件 " + std::to_string(i) + "\r\n";
  Home().Write("Mail.log", log);
  ModMail::MailServer server(Environment());
  ui::frmMailOptions form(nullptr, Program(), server);
  const int count = form.lstLog->GetItemCount();
  EXPECT_GT(count, 10000);
  EXPECT_LT(count, 100000);
  EXPECT_EQ(ui::Typed(form.lstLog->GetItemText(count - 1)), "收到邮件 99999");
  EXPECT_EQ(ui::Typed(form.lstLog->GetItemText(0)), "收到邮件 " + std::to_string(100000 - count));
  EXPECT_THAT(ui::Typed(Find(form, "lblLogPart").GetLabel()),
              HasSubstr("最后 " + std::to_string(count) + " 行"));
  EXPECT_TRUE(Find(form, "lblLogPart").IsShown());
  for (const char* target : {"all.log", "Mail.log"}) {  // the second is itself
    boxes.Plan(wxID_OK, UserPath(target));
    Press(form, "cmdExportLog");
    EXPECT_TRUE(Home().Read(target) == log) << target;
  }
}

}  // namespace
