// The dialogs as a user meets them: what they show, what they refuse, what they save, and what
// their buttons do.

#include <wx/listbox.h>

#include "files/log_tail.h"
#include "settings/manager_password.h"
#include "settings/registry.h"
#include "tests/ui/main_window_fixture.h"
#include "text/code_page.h"
#include "ui/dialogs/login_dialog.h"

namespace test {
namespace {

using testing::HasSubstr;

using Dialogs = MainWindow;

std::string UserRecord(const std::string& name, const std::string& password) {
  return name + std::string(20 - name.size(), ' ') + password +
         std::string(30 - password.size(), ' ');
}

TEST_F(Dialogs, ShowTheSettingsAndSaveWhatIsTypedWhenConfirmed) {
  // What opens it, the settings, what it shows of them, what is typed, what that writes.
  constexpr const char* kCases[][5] = {
      {"cmdWebOptions",
       "[WebServer Options]\nWebRootDir=/srv/网站\nTCPPort=8080\nDNS=x.example\n"
       "StartDefaultPage=1\nRead=True\nWrite=0\nContralAll=1\n",
       "txtWebRoot=/srv/网站|txtWebPort=8080|txtWebAddress=x.example|chkRead=on|chkWrite=off|"
       "chkContralAll=on|chkDefaultFile=on",
       "txtWebRoot=  /srv/www|txtWebIP=192.0.2.1|txtWebPort= 8o8o|txtWebAddress=y.example|"
       "chkDefaultFile=off|chkWrite=on|optAppNone=on",
       "[WebServer Options]\r\nWebRootDir=  /srv/www\r\nWebServerIP=192.0.2.1\r\n"
       "TCPPort= 8o8o\r\nDNS=y.example\r\nStartDefaultPage=0\r\nRead=1\r\nWrite=1\r\n"
       "ContralAll=1\r\noptNoApp=True\r\noptAppDone=False\r\n"},
      {"cmdFtpOptions",
       "[FtpServer Options]\nFtpPort=2121\nDNS=f.example\nFtpServer Root=/srv/ftp\n"
       "FtpServer UploadDir=/srv/ftp/up\nRead=1\nWrite=0\nContralAll=1\n",
       "txtFtpPort=2121|txtFtpAddress=f.example|txtFtpDir=/srv/ftp|txtFtpUploadDir=/srv/ftp/up|"
       "chkRead=on|chkWrite=off|chkContralAll=on",
       "txtFtpIP=192.0.2.1|txtFtpPort=no port|txtFtpAddress= g.example|txtFtpDir=/srv|"
       "txtFtpUploadDir=/srv/上传|chkRead=off|chkWrite=on",
       "[FtpServer Options]\r\nIP=192.0.2.1\r\nFtpPort=no port\r\nDNS= g.example\r\n"
       "FtpServer Root=/srv\r\nFtpServer UploadDir=/srv/上传\r\nRead=0\r\nWrite=1\r\n"
       "ContralAll=1\r\n"},
      {"cmdMailOptions",
       "[MailServer Options]\nSMTP Port=2525\nPOP3 Port=1110\nDNS=m.example\n"
       "MailServer Root=/srv/mail\n",
       "txtSMTPPort=2525|txtPop3Port=1110|txtMailAddress=m.example|txtMailRootDir=/srv/mail",
       "txtMailIP= 192.0.2.1 |txtSMTPPort= 2526|txtPop3Port=1111 |txtMailAddress= n.example|"
       "txtMailRootDir= /srv/邮件 ",
       "[MailServer Options]\r\nIP=192.0.2.1\r\nSMTP port=2526\r\nPOP3 Port=1111\r\n"
       "DNS=n.example\r\nMailServer Root=/srv/邮件\r\n"},
      {"mnuOptions", "[System]\nAutoStartService=0\nStartInTaskBar=1\n",
       "chkShowInBar=on|chkAutoStartService=off|chkSysAutoStart=off|chkManagerPwd=off|txtPwd=grey",
       "chkShowInBar=off|chkAutoStartService=on",
       "[System]\r\nAutoStartService=1\r\nStartInTaskBar=0\r\n"},
      // Bytes that are no text are not lost on their way through the toolkit.
      {"cmdAddVirtualDir", "[VirturlDirInfo]\nPath=/old\nRead=0\nWrite=1\noptNoApp=True\n",
       "txtDir=/old|chkRead=off|chkWrite=on|OptNoApp=on|OptAppDone=off",
       "txtDir= /\xC4\xE3/\xFF新 |OptAppDone=on|chkRead=on|chkWrite=off",
       ("[VirturlDirInfo]\r\nPath=/\xC4\xE3/\xFF新\r\noptNoApp=False\r\noptAppDone=True\r\n"
        "Read=1\r\nWrite=0\r\nContralAll=0\r\n")}};
  Push("cmdStartAll");
  for (const auto& [opener, settings, shown, typed, saved] : kCases) {
    SCOPED_TRACE(opener);
    Home().Write("Server.ini", settings);
    EXPECT_TRUE(Enter(opener, typed, wxID_CANCEL));
    EXPECT_EQ(Home().Read("Server.ini"), settings);
    EXPECT_TRUE(InForm(opener, [&](wxDialog& form) {
      EXPECT_EQ(Contents(form, shown), shown);
      Home().Write("Server.ini", "");
      Fill(form, typed);
      Press(form, "cmdOK");
    }));
    EXPECT_EQ(Home().Read("Server.ini"), saved);
  }
  // What is confirmed holds at once, though the services run. The loading of the FTP settings ends
  // at a port that is no number.
  EXPECT_EQ(web.Domain() + ftp.Domain() + mail.Domain(), "y.examplef.examplen.example");
  EXPECT_EQ(web.RootDir() + ftp.RootDir() + mail.RootDir(), R"(  \srv\www\srv\srv\邮件)");
}

TEST_F(Dialogs, RefuseBlankFieldsInTheirOrderAndSaveNothing) {
  // The dialog, what is typed in the refused field and in others, the message.
  constexpr const char* kCases[][3] = {
      {"cmdWebOptions", "txtWebPort= |txtWebAddress=|txtWebRoot=", "!Tarnwerk: 请指定TCP端口！"},
      {"cmdWebOptions", "txtWebAddress=|txtWebRoot=", "iTarnwerk: 请指定本地域名"},
      {"cmdWebOptions", "txtWebRoot= |txtWebAddress= ", "!Tarnwerk: 请指定WEB主目录！"},
      {"cmdFtpOptions", "txtFtpAddress= |txtFtpDir=", "!Ftp服务器选项: 本地域名不能为空！"},
      {"cmdFtpOptions", "txtFtpDir= |txtFtpUploadDir=", "!Ftp服务器选项: 主目录不能为空！"},
      {"cmdFtpOptions", "txtFtpUploadDir= ", "!Ftp服务器选项: 上传目录不能为空！"},
      {"cmdMailOptions",
       "txtMailAddress= |txtMailRootDir=", "!E-Mail服务器选项: 本地域名不能为空！"},
      {"cmdMailOptions", "txtMailRootDir= ", "!E-Mail服务器选项: 主目录不能为空！"},
      {"mnuOptions", "txtPwd= |chkSysAutoStart=on|chkManagerPwd=on", "!Tarnwerk: 请输入管理密码！"},
      {"cmdAddVirtualDir", "txtDir= ", "!Tarnwerk: 目录不能为空！"},
      {"cmdAddMailUser", "txtUser= |txtPass=", "!添加用户: 请输入用户名！"},
      {"cmdAddMailUser", "txtUser= / |txtPass=x", "!添加用户: 请输入用户名！"},
      {"cmdAddMailUser", "txtUser=..|txtPass=x", "!添加用户: 请输入用户名！"},
      {"cmdAddMailUser", "txtPass= |txtUser=a", "!添加用户: 请输入密码！"},
      {"cmdAddMailUser", "txtPass=\t |txtUser=a", "!添加用户: 请输入密码！"}};
  Home().Write("IndexFN.Log", "a.htm\r\n");
  const std::string settings = Home().Read("Server.ini");
  for (const auto& [opener, typed, box] : kCases) {
    EXPECT_FALSE(Enter(opener, typed));
    EXPECT_EQ(boxes.Take(), box);
    EXPECT_THAT(typed, testing::StartsWith(focused + "="));
  }
  ExpectShown("mnuOptions", "chkSysAutoStart=off|chkManagerPwd=off");
  EXPECT_EQ(Home().Read("Server.ini"), settings);
  EXPECT_EQ(Home().Read("IndexFN.Log"), "a.htm\r\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Home().Native()), {}), 2);
}

TEST_F(Dialogs, SayBelowTheFieldWhatBecomesOfWhatIsTyped) {
  constexpr const char* kRule = "应为 1 到 32767 的数字";
  const std::string noStart = std::string(kRule) + "，否则服务无法启动。";
  const std::string any = std::string(kRule) + "；0 由系统任选端口。";
  const std::string usual = "1 到 32767 的数字";
  const std::tuple<const char*, const char*, const char*, std::string> cases[] = {
      {"cmdWebOptions", "txtWebPort=40000", "lblWebPortNote",
       std::string(kRule) + "，否则仍用端口 8080。"},
      {"cmdWebOptions", "txtWebPort= 32767", "lblWebPortNote", usual},
      {"cmdWebOptions", "txtWebPort=-1", "lblWebPortNote", noStart},
      {"cmdFtpOptions", "txtFtpPort=40000", "lblFtpPortNote", noStart},
      {"cmdFtpOptions", "txtFtpPort=0", "lblFtpPortNote", any},
      {"cmdMailOptions", "txtSMTPPort=", "lblSMTPPortNote",
       std::string(kRule) + "，否则仍用端口 25。"},
      {"cmdMailOptions", "txtPop3Port=abc", "lblPop3PortNote",
       std::string(kRule) + "，否则仍用端口 110。"},
      {"cmdAddMailUser", "txtUser= 张:三", "lblUserNote", "将保存为“张三”。"},
      {"cmdAddMailUser", "txtUser=..", "lblUserNote", "这不能作为用户名。"},
      {"cmdAddMailUser", "txtUser=张三 ", "lblUserNote", R"(不能含有 \ / : * ? " < > |)"}};
  Home().Write("Server.ini",
               "[WebServer Options]\nTCPPort=8080\n[FtpServer Options]\nFtpPort=21\n"
               "[MailServer Options]\nSMTP Port=25\nPOP3 Port=110\n");
  for (const auto& [opener, typed, note, expected] : cases) {
    InForm(opener, [&](wxDialog& form) {
      Fill(form, typed);
      EXPECT_EQ(ui::Typed(dynamic_cast<wxControl&>(Find(form, note)).GetLabelText()), expected)
          << typed;
    });
  }
}

TEST_F(Dialogs, ShowWhatWasTypedBeforeAPortThatKeepsTheServiceFromStarting) {
  const std::string typed = "txtFtpAddress=typed.test|txtFtpUploadDir=/srv/typed|chkRead=on";
  EXPECT_TRUE(Enter("cmdFtpOptions", "txtFtpPort=x|" + typed));
  Push("cmdStartFtpService");
  EXPECT_THAT(Label("fraFtp/lblReason"), HasSubstr("1 到 32767"));
  ExpectShown("cmdFtpOptions", typed);
}

TEST_F(Dialogs, StayOpenAndSaySoWhereTheSettingsCannotBeReadOrWritten) {
  for (const std::string file : {"Server.ini", "IndexFN.Log"}) {
    SCOPED_TRACE(file);
    std::filesystem::remove(Home().Path("Server.ini"));
    Home().Write(file + "/inside", "");
    EXPECT_FALSE(Enter("cmdWebOptions", ""));
    EXPECT_THAT(boxes.Take(), HasSubstr("设置没有保存"));
    EXPECT_THAT(ErrorLog(), HasSubstr("Settings not saved: "));
    std::filesystem::remove_all(Home().Path(file));
    EXPECT_FALSE(Home().Has("IndexFN.Log") || Home().Has("Server.ini"));
  }
}

TEST_F(Dialogs, TheFirstOneThatIsSavedSavesWhatTheOtherServersHold) {
  Home().Write("Server.ini", "[FtpServer Options]\nFtpPort=2121\nFtpServer UploadDir=/srv/up\n");
  Click("imgFtp");
  std::filesystem::remove(Home().Path("Server.ini"));
  EXPECT_TRUE(Enter("cmdWebOptions", "txtWebPort=8080"));
  for (const char* line :
       {"TCPPort=8080", "FtpPort=2121", "FtpServer UploadDir=/srv/up", "POP3 Port=0"}) {
    EXPECT_THAT(Home().Read("Server.ini"), HasSubstr(std::string("\r\n") + line + "\r\n"));
  }
}

TEST_F(Dialogs, AskTheFileWhetherProgramsAreOffAndTheSettingsWhetherTheyAreOn) {
  for (const auto& [file, on, shown] :
       {std::tuple("", "False", "optAppNone=on|OptAppDone=off"),
        std::tuple("[应用程序许可]\nEnabalExecute=1\n", "False", "optAppNone=on|OptAppDone=off"),
        std::tuple("[应用程序许可]\nEnabalExecute=0\n", "False", "optAppNone=off|OptAppDone=off"),
        std::tuple("[应用程序许可]\nEnabalExecute=1\n", "True", "optAppNone=off|OptAppDone=on")}) {
    if (*file != '\0') Home().Write("EnabalExecute.txt", file);
    Home().Write("Server.ini", std::string("[WebServer Options]\noptAppDone=") + on + "\n");
    ExpectShown("cmdWebOptions", shown);
  }
}

TEST_F(Dialogs, TakeFoldersFromAChooser) {
  constexpr const char* kCases[][4] = {
      {"cmdWebOptions", "cmdBrowser", "选择Web服务器的主目录", "txtWebRoot"},
      {"cmdFtpOptions", "cmdBrowser", "请选择FTP的站点位置", "txtFtpDir"},
      {"cmdFtpOptions", "cmdBrower2", "请选择FTP站点文件上传的位置", "txtFtpUploadDir"},
      {"cmdMailOptions", "cmdBrowser", "选择Email服务器内容的存放目录", "txtMailRootDir"},
      {"cmdAddVirtualDir", "cmdBrowser", "选择虚拟目录", "txtDir"}};
  for (const auto& [opener, button, title, field] : kCases) {
    InForm(opener, [&](wxDialog& form) {
      const std::string before = Contents(form, field);
      boxes.Plan(wxID_CANCEL, "/srv");
      boxes.Plan(wxID_OK, "/srv");
      Press(form, button);
      EXPECT_EQ(Contents(form, field), before);
      Press(form, button);
      EXPECT_EQ(Contents(form, field), field + std::string("=/srv"));
      EXPECT_EQ(boxes.Take(), title + std::string(": []\n") + title + ": []");
    });
  }
}

TEST_F(Dialogs, AddMoveAndDeleteDefaultDocuments) {
  Home().Write("IndexFN.Log", "a\r\nb\r\n");
  const auto play = [&](std::initializer_list<std::pair<const char*, const char*>> steps) {
    return InForm("cmdWebOptions", [&](wxDialog& form) {
      auto& list = dynamic_cast<wxListBox&>(Find(form, "lstDocument"));
      for (const auto& [button, expected] : steps) {
        Press(form, button);
        wxString names;
        int i = 0;
        for (const wxString& name : list.GetStrings()) {
          names += (list.IsSelected(i++) ? ">" : " ") + name;
        }
        EXPECT_EQ(ui::Typed(names), expected) << button;
        const int last = static_cast<int>(list.GetCount()) - 1;
        if (list.GetSelection() == wxNOT_FOUND && last >= 0) list.SetSelection(last);
      }
      Press(form, "cmdOK");
    });
  };
  boxes.Plan(wxID_OK, "新");
  EXPECT_TRUE(play({{"cmdUpDocument", " a b"},
                    {"cmdAddDocument", " a>b 新"},
                    {"cmdUpDocument", ">b a 新"},
                    {"cmdUpDocument", ">b a 新"},
                    {"cmdDownDocument", " a>b 新"},
                    {"cmdDownDocument", " a 新>b"},
                    {"cmdDownDocument", " a 新>b"},
                    {"cmdDelDocument", " a>新"},
                    {"cmdUpDocument", ">新 a"}}));
  EXPECT_EQ(boxes.Take(), "文件名: 请输入缺省的文件名: [default.htm]");
  EXPECT_EQ(Home().Read("IndexFN.Log"), "新\r\na\r\n");
  // What was deleted does not come back.
  EXPECT_TRUE(play({{"cmdDelDocument", " 新 a"}, {"cmdDelDocument", ">新"}}));
  EXPECT_TRUE(play({{"cmdDelDocument", " 新"}, {"cmdDelDocument", ""}}));
  EXPECT_FALSE(Home().Has("IndexFN.Log"));
}

TEST_F(Dialogs, ShowTheEndOfTheLogExportItWholeAndClearIt) {
  using platform::Charset;
  for (const auto& [opener, log, lines, charset] :
       {std::tuple("cmdMailOptions", "Mail.log", 100000, Charset::kGbk),
        std::tuple("cmdWebOptions", "Web.log", 2, Charset::kUtf8)}) {
    std::string whole;
    // 16 bytes each in GBK, so that the part that is shown begins with a whole line.
    const auto line = [](int i) { return "已收到 " + std::to_string(1000000 + i); };
    for (int i = 0; i < lines; ++i) whole += line(i) + "\r\n";
    const std::string bytes = text::Encode(charset, whole);
    Home().Write(log, bytes);
    InForm(opener, [&](wxDialog& form) {
      auto& list = dynamic_cast<wxListCtrl&>(Find(form, "lstLog"));
      const int count = list.GetItemCount();
      EXPECT_EQ(count, std::min(lines, static_cast<int>(files::kShownPartOfLog / 16)));
      EXPECT_EQ(ui::Typed(list.GetItemText(0)), line(lines - count));
      EXPECT_EQ(ui::Typed(list.GetItemText(count - 1)), line(lines - 1));
      EXPECT_EQ(Find(form, "lblLogPart").IsShown(), lines > 2);
      EXPECT_THAT(ui::Typed(Find(form, "lblLogPart").GetLabel()),
                  HasSubstr("最后 " + std::to_string(count) + " 行"));
      boxes.Plan(wxID_CANCEL, Home().Path("new.txt"));
      boxes.Plan(wxID_OK, Home().Path("old.txt"));
      boxes.Plan(wxID_OK, Home().Path(log));
      for (int i = 0; i < 3; ++i) Press(form, "cmdExportLog");
      EXPECT_THAT(boxes.Take(), HasSubstr("导出日志: LOG文件(*.log)|*.log|文本文件(*.txt)|*.txt|"
                                          "所有文件(*.*)|*.* []\n"));
      EXPECT_FALSE(Home().Has("new.txt"));
      EXPECT_TRUE(Home().Read("old.txt") == whole && Home().Read(log) == bytes);
      Press(form, "cmdClearLog");
      EXPECT_EQ(list.GetItemCount(), 0);
      EXPECT_FALSE(Home().Has(log));
      Press(form, "cmdExportLog");
      EXPECT_EQ(boxes.Take(), "") << "an empty list is not exported";
    });
  }
}

TEST_F(Dialogs, SetAndRemoveTheManagerPasswordThatTheWindowAsksFor) {
  const std::string typed = "chkManagerPwd=on|txtPwd=sesame 密码";
  EXPECT_TRUE(Enter("mnuOptions", typed));
  EXPECT_EQ(Home().Read("ETUser.dzt"), UserRecord("Admin", "sesame 密码"));
  for (const char* button : {"cmdCancel", "cmdOK"}) {
    EXPECT_FALSE(window->IsShown());
    boxes.ScriptForm([=](wxDialog& form) {
      Fill(form, "txtPwd=sesame 密码");
      Press(form, button);
    });
    window->Open();
    EXPECT_TRUE(window->IsShown() || window->IsInTray() || closed == 1);
  }
  EXPECT_TRUE(window->IsShown());
  ExpectShown("mnuOptions", typed);
  EXPECT_TRUE(Enter("mnuOptions", "txtPwd=" + std::string(31, 'x')));
  ExpectShown("mnuOptions", "txtPwd=" + std::string(30, 'x'));  // what fits
  EXPECT_TRUE(Enter("mnuOptions", "chkManagerPwd=off"));
  EXPECT_FALSE(Home().Has("ETUser.dzt"));
  ExpectShown("mnuOptions", "chkManagerPwd=off|txtPwd=grey");
}

TEST_F(Dialogs, StartWithTheSystemAndTellOfSystemsThatNeedAService) {
  auto key = Modreg::CreateKey(Modreg::Root::kLocalMachine,
                               R"(Software\Microsoft\Windows\CurrentVersion)");
  for (const char* version : {"Windows 98", "Windows NT"}) {
    Modreg::SetText(key, "Version", version);
    for (const char* choice : {"chkSysAutoStart=on", "chkSysAutoStart=off"}) {
      EXPECT_TRUE(Enter("mnuOptions", choice));
      ExpectShown("mnuOptions", choice);
    }
  }
  EXPECT_EQ(boxes.Take(), "!Tarnwerk: 您使用的操作系统是WINDOWS NT本程序须注册服务后才能使用！");
}

TEST_F(Dialogs, AddAMailUserFromTheKeyboard) {
  EXPECT_TRUE(InForm("cmdAddMailUser", [&](wxDialog& form) {
    PressEnterIn(form, "txtUser");
    EXPECT_EQ(FocusedName(), "txtUser");
    Fill(form, "txtUser= 张:三 ");
    PressEnterIn(form, "txtUser");
    EXPECT_EQ(FocusedName(), "txtPass");
    PressEnterIn(form, "txtPass");
    EXPECT_TRUE(form.IsModal());
    Fill(form, "txtPass= a b ");
    PressEnterIn(form, "txtPass");
  }));
  EXPECT_EQ(boxes.Take(), "");
  EXPECT_EQ(Home().Read("mail/User/张三/UserInfo.ini"),
            "[用户信息]\r\nUser=张三\r\nPassword=a b\r\n");
}

TEST_F(Dialogs, LogInByTheUserFileOrElseByTheBuiltInPasswordUntilTimeIsUp) {
  using Row = std::tuple<std::optional<std::string>, const char*, bool>;
  const std::string admin = UserRecord("Admin", "Secret");
  settings::SetManagerPassword(Program(), "Secret");
  std::filesystem::remove(Home().Path("ETUser.dzt"));
  for (const auto& [userFile, typed, logsIn] :
       {Row{{}, " 739205 ", true}, Row{{}, "739206", false}, Row{{}, "", false},
        Row{admin, "Secret", true}, Row{admin, "secret", false}, Row{admin, "739205", false},
        Row{UserRecord("admin", "x") + admin, "x", false}, Row{"", "739205", false},
        Row{admin.substr(0, 49), "Secret", false}}) {
    SCOPED_TRACE(userFile.value_or("no file") + ", " + typed);
    if (userFile) Home().Write("ETUser.dzt", *userFile);
    EXPECT_TRUE(InForm("mnuOptions", [&](wxDialog& form) {
      EXPECT_FALSE(Find(form, "lblMsg").IsShown());
      for (const std::string password : {"wrong", typed}) {
        EXPECT_EQ(FocusedName(), "txtPwd");
        Fill(form, "txtPwd=" + password);
        PressEnterIn(form, "txtPwd");
        EXPECT_TRUE(Find(form, "lblMsg").IsShown());
      }
      auto& timer = dynamic_cast<ui::frmPassWord&>(form).Timer1;
      EXPECT_TRUE(timer.IsRunning());
      wxTimerEvent event(timer);
      if (!logsIn) form.ProcessWindowEvent(event);
    }));
    EXPECT_EQ(boxes.Take(), logsIn ? "系统选项" : "");
  }
}

}  // namespace
}  // namespace test
