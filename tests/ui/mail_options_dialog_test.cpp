#include "ui/mail_options_dialog.h"

#include <wx/filedlg.h>

#include "platform/native_path.h"
#include "tests/ui/dialog_fixture.h"
#include "ui/toolkit_text.h"

namespace {

using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

class MailOptionsDialog : public test::DialogFixture {
 protected:
  ModMail::MailServer server_{Environment()};
};

TEST_F(MailOptionsDialog, LoadsTheSettingsAnewAtItsOpening) {
  Home().Write("Server.ini",
               "[MailServer Options]\nSMTP Port=2525\nPOP3 Port=1110\nDNS=m.example\n"
               "MailServer Root=/srv/mail\n");
  ui::frmMailOptions form(nullptr, Program(), server_);
  EXPECT_EQ(TextIn(form, "txtSMTPPort"), "2525");
  EXPECT_EQ(TextIn(form, "txtPop3Port"), "1110");
  EXPECT_EQ(TextIn(form, "txtMailAddress"), "m.example");
  EXPECT_EQ(TextIn(form, "txtMailRootDir"), "/srv/mail");
  EXPECT_EQ(server_.Options().smtpPort, 2525);
}

TEST_F(MailOptionsDialog, RefusesDomainThenRoot) {
  ui::frmMailOptions form(nullptr, Program(), server_);
  EXPECT_EQ(Run(form,
                [&] {
                  Type(form, "txtMailAddress", " ");
                  Type(form, "txtMailRootDir", "");
                  Press(form, "cmdOK");
                  test::Box box = boxes.TakeOnly();
                  EXPECT_EQ(box.text, "本地域名不能为空！");
                  EXPECT_EQ(box.title, "E-Mail服务器选项");
                  EXPECT_EQ(box.style & wxICON_MASK, wxICON_WARNING);
                  EXPECT_EQ(FocusedName(), "txtMailAddress");
                  Type(form, "txtMailAddress", "m.example");
                  Press(form, "cmdOK");
                  box = boxes.TakeOnly();
                  EXPECT_EQ(box.text, "主目录不能为空！");
                  EXPECT_EQ(FocusedName(), "txtMailRootDir");
                }),
            kStayedOpen);
  EXPECT_EQ(server_.Options().mailRoot, Home().Text("mailroot"));
}

TEST_F(MailOptionsDialog, TakesOverTheRootAtOnceAndWritesEverythingTrimmed) {
  Home().Write("Server.ini", "");
  ui::frmMailOptions form(nullptr, Program(), server_);
  const int smtpPort = server_.Options().smtpPort;
  const std::string domain = server_.Options().mailDomain;
  EXPECT_EQ(Run(form,
                [&] {
                  Type(form, "txtMailIP", " 192.0.2.1 ");
                  Type(form, "txtSMTPPort", " 2525");
                  Type(form, "txtPop3Port", "1110 ");
                  Type(form, "txtMailAddress", " m.example");
                  Type(form, "txtMailRootDir", " /srv/邮件 ");
                  Press(form, "cmdOK");
                }),
            wxID_OK);
  EXPECT_EQ(Home().Read("Server.ini"),
            "[MailServer Options]\r\nIP=192.0.2.1\r\nSMTP port=2525\r\nPOP3 Port=1110\r\n"
            "DNS=m.example\r\nMailServer Root=/srv/邮件\r\n");
  EXPECT_EQ(server_.Options().mailRoot, platform::PathTextFromUser("/srv/邮件"));
  EXPECT_EQ(server_.Options().smtpPort, smtpPort);
  EXPECT_EQ(server_.Options().mailDomain, domain);
  server_.LoadOptions();
  EXPECT_EQ(server_.Options().smtpPort, 2525);
}

TEST_F(MailOptionsDialog, ChoosesTheRoot) {
  ui::frmMailOptions form(nullptr, Program(), server_);
  boxes.Plan(wxID_OK, UserPath());
  Press(form, "cmdBrowser");
  EXPECT_EQ(boxes.TakeOnly().title, "选择Email服务器内容的存放目录");
  EXPECT_EQ(TextIn(form, "txtMailRootDir"), UserPath());
}

TEST_F(MailOptionsDialog, ExportsItsLogAndAsksBeforeOverwriting) {
  Home().Write("Mail.log", "收到一\r\n收到二");
  Home().Write("old.txt", "much longer than what is written over it");
  ui::frmMailOptions form(nullptr, Program(), server_);
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
  EXPECT_EQ(Home().Read("old.txt"), "收到一\r\n收到二\r\n");

  Press(form, "cmdClearLog");
  EXPECT_EQ(form.lstLog->GetItemCount(), 0);
  EXPECT_FALSE(Home().Has("Mail.log"));
}

TEST_F(MailOptionsDialog, ShowsTheLastPartOfALargeLogAndExportsAllOfIt) {
  std::string log;
  for (int i = 0; i < 100000; ++i) log += "收到邮件 " + std::to_string(i) + "\r\n";
  Home().Write("Mail.log", log);
  ui::frmMailOptions form(nullptr, Program(), server_);
  const int count = form.lstLog->GetItemCount();
  EXPECT_GT(count, 10000);
  EXPECT_LT(count, 100000);
  EXPECT_EQ(ui::Typed(form.lstLog->GetItemText(count - 1)), "收到邮件 99999");
  EXPECT_EQ(ui::Typed(form.lstLog->GetItemText(0)), "收到邮件 " + std::to_string(100000 - count));
  EXPECT_TRUE(form.lstLog->IsShown());
  EXPECT_THAT(ui::Typed(Find(form, "lblLogPart").GetLabel()),
              testing::HasSubstr("最后 " + std::to_string(count) + " 行"));
  EXPECT_TRUE(Find(form, "lblLogPart").IsShown());

  boxes.Plan(wxID_OK, UserPath("all.log"));
  Press(form, "cmdExportLog");
  EXPECT_TRUE(Home().Read("all.log") == log);

  boxes.Plan(wxID_OK, UserPath("Mail.log"));
  Press(form, "cmdExportLog");
  EXPECT_TRUE(Home().Read("Mail.log") == log) << "exported onto itself";
}

}  // namespace
