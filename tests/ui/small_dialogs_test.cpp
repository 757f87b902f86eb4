// The questions for domain names, the virtual directory, and texts on their way to the toolkit.

#include "tests/ui/dialog_fixture.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/domain_questions.h"
#include "ui/dialogs/virtual_directory_dialog.h"

namespace {

using core::ServiceKind;

class DomainQuestions : public test::DialogFixture {};

TEST_F(DomainQuestions, AskForTheDomainOfTheirServiceAndWriteTheAnswer) {
  Home().Write("Server.ini",
               "[WebServer Options]\r\nDNS=w\r\n[FtpServer Options]\r\nDNS=f\r\n"
               "[MailServer Options]\r\nDNS=m\r\n");
  struct Case {
    ServiceKind service;
    const char* prompt;
    const char* title;
    const char* before;
  };
  for (const Case& c : {Case{ServiceKind::kWeb, "请输入Web域名：", "Web域名设置", "w"},
                        Case{ServiceKind::kFtp, "请输入FTP域名：", "FTP域名设置", "f"},
                        Case{ServiceKind::kMail, "请输入Email域名：", "Email域名设置", "m"}}) {
    boxes.Plan(wxID_OK, std::string(c.before) + ".example");
    EXPECT_EQ(ui::AskDomain(nullptr, Program(), c.service), std::string(c.before) + ".example");
    const test::Box box = boxes.TakeOnly();
    EXPECT_EQ(box.text, c.prompt);
    EXPECT_EQ(box.title, c.title);
    EXPECT_EQ(box.proposed, c.before);
  }
  EXPECT_EQ(Home().Read("Server.ini"),
            "[WebServer Options]\r\nDNS=w.example\r\n[FtpServer Options]\r\nDNS=f.example\r\n"
            "[MailServer Options]\r\nDNS=m.example\r\n");
  EXPECT_FALSE(Home().Has("hosts"));
}

TEST_F(DomainQuestions, ChangeNothingWithoutAnAnswer) {
  boxes.Plan(wxID_CANCEL, "x");
  EXPECT_EQ(ui::AskDomain(nullptr, Program(), ServiceKind::kWeb), std::nullopt);
  boxes.Plan(wxID_OK, "");
  EXPECT_EQ(ui::AskDomain(nullptr, Program(), ServiceKind::kWeb), std::nullopt);
  EXPECT_FALSE(Home().Has("Server.ini"));
}

class VirtualDirectoryDialog : public test::DialogFixture {};

TEST_F(VirtualDirectoryDialog, RefusesABlankPathAndReplacesTheOneEntry) {
  Home().Write("Server.ini", "[VirturlDirInfo]\r\nPath=/old\r\nRead=0\r\n");
  ui::frmEditDir form(nullptr, Program());
  EXPECT_EQ(form.GetTitle(), ui::Shown("添加虚拟目录"));
  EXPECT_EQ(TextIn(form, "txtDir"), "/old");
  EXPECT_EQ(Run(form,
                [&] {
                  Type(form, "txtDir", "   ");
                  Press(form, "cmdOK");
                  const test::Box box = boxes.TakeOnly();
                  EXPECT_EQ(box.text, "目录不能为空！");
                  EXPECT_EQ(box.style & wxICON_MASK, wxICON_EXCLAMATION);
                  EXPECT_EQ(FocusedName(), "txtDir");

                  Type(form, "txtDir", " /srv/新 ");
                  Set(form, "OptAppDone", true);
                  Set(form, "chkRead", true);
                  Press(form, "cmdOK");
                }),
            wxID_OK);
  EXPECT_EQ(Home().Read("Server.ini"),
            "[VirturlDirInfo]\r\nPath=/srv/新\r\nRead=1\r\noptNoApp=False\r\noptAppDone=True\r\n"
            "Write=0\r\nContralAll=0\r\n");
}

TEST(ToolkitText, LosesNothingOnItsWayThere) {
  for (const std::string& text : {std::string("路径 C:\\a"), std::string("\xC4\xE3/\xFF"),
                                  std::string("nul\0in", 6), std::string()}) {
    EXPECT_EQ(ui::Typed(ui::Shown(text)), text);
    EXPECT_EQ(ui::Shown(text).empty(), text.empty());
  }
}

}  // namespace
