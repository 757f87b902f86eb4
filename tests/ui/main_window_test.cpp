// The window's commands and what the user sees of them, and what the window adds to what service
// control says: why a start failed, what goes on.

#include <wx/display.h>
#include <wx/hyperlink.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>
#include <wx/treectrl.h>
#include <wx/utils.h>

#include "core/start_diagnosis.h"
#include "settings/user_state.h"
#include "tests/ui/main_window_fixture.h"
#include "text/strings.h"
#include "ui/controls/colours.h"
#include "ui/dialogs/tip_of_the_day.h"
#include "ui/pages/connection_list.h"
#include "ui/pages/problem_list.h"
#include "ui/pages/recent_list.h"
#include "ui/window/status_bar.h"
#include "ui/window/unseen_problems.h"

namespace test {
namespace {

using core::ServiceKind;
using testing::HasSubstr;

TEST_F(MainWindow, StartsAndStopsAServiceByItsButtonItsMenuItemAndItsCard) {
  const auto expectRunning = [&](bool running) {
    EXPECT_EQ(web.IsRunning(), running);
    EXPECT_EQ(IsVisible("cmdStopWebService") && IsVisible("cmdCardStopWeb"), running);
    EXPECT_EQ(IsVisible("cmdStartWebService") && IsVisible("cmdCardStartWeb"), !running);
    EXPECT_TRUE(HasItem(ui::mnuStopWeb) == running && HasItem(ui::mnuStartWeb) != running);
    EXPECT_EQ(window->stbInfo->PanelText(core::ServiceKind::kWeb),
              running ? "Web服务：ON" : "Web服务：OFF");
    EXPECT_EQ(Label("lblWebStart") + Label("lblWebAddress"),
              (running ? "Web发布已经启动。 您的主页在：" : "Web服务已经停止。您的主页是： ") +
                  std::string("Http://home.test"));
    EXPECT_EQ(Find("lblWebAddress").IsThisEnabled(), running);
  };
  EXPECT_EQ(Label("lblWebInfo"), "点击“启动”您可以开始Web服务。");
  for (const auto& [start, stop] : {std::pair("cmdStartWebService", "cmdStopWebService"),
                                    std::pair("cmdCardStartWeb", "cmdCardStopWeb")}) {
    Push(start);
    expectRunning(true);
    ChooseItem(ui::mnuStopWeb);
    expectRunning(false);
    ChooseItem(ui::mnuStartWeb);
    Push(stop);
    expectRunning(false);
  }
}

TEST_F(MainWindow, StartsAndStopsAllWithOneButtonOrItem) {
  Push("cmdStartAll");
  EXPECT_TRUE(web.IsRunning() && ftp.IsRunning() && mail.IsRunning());
  EXPECT_EQ(Label("lblMailAddress"), "SMTP:home.test  POP3:home.test");
  EXPECT_FALSE(Find("cmdStartAll").IsEnabled());
  Push("cmdStopAll");
  EXPECT_FALSE(web.IsRunning() || ftp.IsRunning() || mail.IsRunning());
  EXPECT_FALSE(Find("cmdStopAll").IsEnabled());
  const auto canChoose = [&](ui::MenuItem item) { return window->GetMenuBar()->IsEnabled(item); };
  EXPECT_TRUE(canChoose(ui::mnuStartAll) && !canChoose(ui::mnuStopAll));
  ChooseItem(ui::mnuStartAll);
  EXPECT_TRUE(web.IsRunning() && ftp.IsRunning() && mail.IsRunning());
  EXPECT_TRUE(!canChoose(ui::mnuStartAll) && canChoose(ui::mnuStopAll));
  ChooseItem(ui::mnuStopAll);
  EXPECT_FALSE(web.IsRunning() || ftp.IsRunning() || mail.IsRunning());
}

TEST_F(MainWindow, EverySelectorAndMenuItemShowsItsPage) {
  const auto expectPage = [&](const std::string& page) {
    const std::pair<const char*, ui::MenuItem> items[] = {{"fraWelcome", ui::mnuViewWelcome},
                                                          {"fraWeb", ui::mnuViewWeb},
                                                          {"fraFtp", ui::mnuViewFtp},
                                                          {"fraMail", ui::mnuViewEmail},
                                                          {"fraProblems", ui::mnuViewProblems}};
    for (const auto& [each, item] : items) {
      EXPECT_EQ(IsVisible(each), each == page) << each;
      EXPECT_EQ(window->GetMenuBar()->IsChecked(item), each == page) << each;
    }
  };
  expectPage("fraWelcome");
  constexpr struct {
    const char *page, *selectors[3];
    ui::MenuItem item;
  } kPages[] = {
      {"fraWeb", {"ImgWeb", "lblWebIcon", "fraWebService"}, ui::mnuViewWeb},
      {"fraFtp", {"imgFtp", "lblFtpIcon", "fraFtpService"}, ui::mnuViewFtp},
      {"fraMail", {"ImgMail", "lblMailIcon", "fraMailService"}, ui::mnuViewEmail},
      {"fraProblems", {"picProblems", "lblProblemsIcon", "fraProblemsEntry"}, ui::mnuViewProblems},
      {"fraWelcome", {"picSelect", "picSelect", "picSelect"}, ui::mnuViewWelcome}};
  for (int way = 0; way <= 3; ++way) {
    for (const auto& [page, selectors, item] : kPages) {
      if (way < 3) Click(selectors[way]);
      if (way == 3) ChooseItem(item);
      expectPage(page);
    }
  }
  Push("cmdCardWebPage");
  expectPage("fraWeb");
}

TEST_F(MainWindow, AddressesOpenWithTheirPortsOnlyWhileTheServiceRuns) {
  Home().Write("bin/xdg-open",
               "#!/bin/sh\necho \"$1\" >>'" + Home().Path("opened").string() + "'\n");
  std::filesystem::permissions(Home().Path("bin/xdg-open"), std::filesystem::perms::all);
  wxString path;
  wxGetEnv("PATH", &path);
  wxSetEnv("PATH", ui::Shown(Home().Path("bin").string()) + ":" + path);
  const auto click = [&](const char* name) {
    wxWindow& link = Find(name);
    wxHyperlinkEvent event(&link, link.GetId(), "");
    link.ProcessWindowEvent(event);
  };
  click("lblFtpAddress");
  Push("cmdStartAll");
  const auto url = [](const std::string& site, int port) {
    return site + ":" + std::to_string(port) + "\n";
  };
  const auto port = ftp.ListeningPort();
  const std::string moved = Home().Path("moved").string();
  Home().Write("Server.ini", "[FtpServer Options]\nFtpPort=81\nDNS=x\nFtpServer Root=" + moved);
  Click("imgFtp");  // loads the settings anew
  EXPECT_EQ(Label("lblFtpRootDir"), moved);
  EXPECT_EQ(Label("lblFtpAddress"), "ftp://x");
  click("lblFtpAddress");
  const auto opened = [&](const std::string& urls) { return Home().Read("opened") == urls; };
  EXPECT_TRUE(Until([&] { return opened(url("ftp://x", port)); }));
  click("lblWebAddress");
  EXPECT_TRUE(Until(
      [&] { return opened(url("ftp://x", port) + url("http://home.test", web.ListeningPort())); }));
  Program().errors.LogError("x");
  Push("cmdOpenErrorLog");
  EXPECT_TRUE(Until([&] { return Home().Read("opened").ends_with("/RunErr.Log\n"); }));
  // A changed port is announced, and holds after the restart that the page offers.
  EXPECT_EQ(Label("fraFtp/lblPorts"), std::to_string(port));
  for (int next = 24117; ftp.ListeningPort() != next - 13; next += 13) {
    if (!ftp.IsRunning()) Push("cmdStartFtpService");
    Home().Write("Server.ini", "[FtpServer Options]\nFtpPort=" + std::to_string(next) + "\n");
    Click("imgFtp");
    EXPECT_EQ(Label("fraFtp/lblRestartNote"),
              "端口已改为 " + std::to_string(next) + "，重新启动服务后生效。");
    Push("fraFtp/cmdRestart");
  }
  EXPECT_EQ(Label("fraFtp/lblPorts"), std::to_string(ftp.ListeningPort()));
  EXPECT_EQ(Label("fraFtp/lblRestartNote") + Label("fraFtp/cmdRestart"), "");
}

TEST_F(MainWindow, ADomainIsAskedForAndWrittenAndShown) {
  const std::string settings = Home().Read("Server.ini");
  constexpr const char* kCases[][4] = {
      {"cmdWebDns", "Web域名设置: 请输入Web域名：", "lblWebAddress", "Http://new.test"},
      {"cmdFtpDns", "FTP域名设置: 请输入FTP域名：", "lblFtpAddress", "ftp://new.test"},
      {"cmdEmailDns", "Email域名设置: 请输入Email域名：", "lblMailAddress",
       "SMTP:new.test  POP3:new.test"}};
  for (const auto& [button, question, label, shown] : kCases) {
    boxes.Plan(wxID_OK, "new.test");
    boxes.Plan(wxID_CANCEL, "other.test");
    boxes.Plan(wxID_OK, "");
    for (int i = 0; i < 3; ++i) Push(button);
    EXPECT_THAT(boxes.Take(), testing::StartsWith(question + std::string(" [home.test]\n")));
    EXPECT_EQ(Label(label), shown);
  }
  EXPECT_EQ(Home().Read("Server.ini"), text::ReplaceAll(settings, "home.test", "new.test"));
  EXPECT_EQ(web.Domain(), "new.test");
  EXPECT_FALSE(Home().Has("hosts")) << "until the next start";
}

TEST_F(MainWindow, ShowsTheWebFolderWithSubfoldersFirst) {
  for (const char* file : {"zoo/inner.htm", "Art/picture.png", "B.htm", "a.htm"}) {
    Home().Write(std::string("www/") + file, "");
  }
  Click("ImgWeb");
  auto& tree = dynamic_cast<wxTreeCtrl&>(Find("tvWebDir"));
  wxTreeItemIdValue position;
  const auto children = [&](wxTreeItemId parent) {
    wxString names;
    for (auto child = tree.GetFirstChild(parent, position); child.IsOk();
         child = tree.GetNextChild(parent, position)) {
      names += tree.GetItemText(child) + " ";
    }
    return names;
  };
  const wxTreeItemId top = tree.GetRootItem();
  EXPECT_TRUE(Until([&] { return children(top) == "Art zoo a.htm B.htm "; })) << children(top);
  EXPECT_TRUE(tree.IsExpanded(top));
  const wxTreeItemId art = tree.GetFirstChild(top, position);
  tree.Expand(art);
  EXPECT_TRUE(Until([&] { return children(art) == "picture.png "; })) << children(art);
}

TEST_F(MainWindow, MailUsersAreListedChangedAddedAndDeleted) {
  Home().Write("mail/User/wang/UserInfo.ini", "[用户信息]\r\nUser=old\r\nPassword=secret\r\n");
  Home().Write("mail/User/wang/Message_1.eml", "");
  Home().Write("mail/User/wang/Message_2.EML", "");
  Click("ImgMail");
  wxListCtrl& list = List("lvMailUser");
  const auto users = [&] {
    wxString all;
    for (int row = 0; row < list.GetItemCount(); ++row) {
      all += list.GetItemText(row, 0) + "/" + list.GetItemText(row, 1) + " ";
    }
    return all;
  };
  for (const int answer : {wxID_NO, wxID_YES}) {
    EXPECT_EQ(users(), "wang/secret ");
    boxes.Plan(answer);
    const auto change = [](wxDialog& form) {
      EXPECT_EQ(ui::Typed(form.GetTitle()), "编辑用户");
      EXPECT_EQ(Contents(form, "txtUser|txtPass"), "txtUser=wang|txtPass=secret");
      Fill(form, "txtPass=new");
      Press(form, "OKButton");
    };
    EXPECT_EQ(InForm("cmdEditMailUser", change), answer == wxID_YES);
  }
  const std::string question = "?添加用户: 该用户账号已存在，是否要更改密码？ [y/n]\n";
  EXPECT_EQ(boxes.Take(), question + question + "i添加用户: 您已成功更改密码！");
  EXPECT_THAT(Home().Read("mail/User/wang/UserInfo.ini"), HasSubstr("\r\nUser=wang\r\n"));
  ExpectShown("cmdAddMailUser", "txtUser=|txtPass=");
  EXPECT_TRUE(Enter("cmdAddMailUser", "txtUser=li|txtPass=1234"));
  EXPECT_EQ(users(), "li/1234 wang/new ");

  Push("cmdDelMailUser");
  EXPECT_EQ(boxes.Take(), "!Tarnwerk: 请选择要删除的用户！");
  list.SetItemState(0, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
  EXPECT_EQ(Label("lblMessages"), "用户“li”没有邮件。");
  list.SetItemState(1, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
  for (const int answer : {wxID_NO, wxID_YES}) {
    EXPECT_EQ(Label("lblMessages"), "用户“wang”有 2 封邮件，删除用户时会一起删除。");
    EXPECT_TRUE(Home().Has("mail/User/wang"));
    boxes.Plan(answer);
    Push("cmdDelMailUser");
    EXPECT_EQ(boxes.Take(), "?Tarnwerk: 确实要删除该用户吗？ [y/n]");
  }
  EXPECT_EQ(users() + Label("lblMessages"), "li/1234  ");
  EXPECT_FALSE(Home().Has("mail/User/wang"));
}

TEST_F(MainWindow, CanAlwaysBeFoundAgainAndEndsOnlyWhenTheUserEndsIt) {
  window->Open();
  ChooseItem(ui::mnuShowSystemTray);
  // Minimised where there is no tray.
  EXPECT_TRUE(window->IsShown() || window->IsInTray());
  window->Close();
  EXPECT_EQ(closed, 1);
  ChooseItem(ui::mnuExit);
  EXPECT_EQ(closed, 2);
}

TEST_F(MainWindow, OpensAFormFromAnEventWhileTheEventsBehindItGoOn) {
  bool next = false;
  bool closes = false;
  Environment().loop.Post([&] {
    closes = InForm("mnuOptions", [&](wxDialog& form) {
      EXPECT_TRUE(Until([&] { return next; }));
      form.EndModal(wxID_CANCEL);
    });
  });
  Environment().loop.Post([&] { next = true; });
  EXPECT_TRUE(Until([&] { return closes; }));
}

TEST_F(MainWindow, ComesBackWhereItWas) {
  window->Open();
  window->SetSize(40, 50, 900, 700);
  Until([&] { return window->GetSize() == wxSize(900, 700); });
  const wxRect place = window->GetRect();
  window->CloseEverything([] {});
  auto* next = new ui::frmMain;
  EXPECT_EQ(next->GetRect(), place);
  next->Destroy();
}

TEST_F(MainWindow, IsWhollyOnTheScreenWhateverIsRememberedOfItsPlace) {
  const wxRect room = wxDisplay(window).GetClientArea();
  for (const char* place :
       {"", "Left=-9999\nTop=50\nWidth=900\nHeight=700", "Left=900\nTop=600\nWidth=900\nHeight=700",
        "Left=2147483647\nTop=-2147483648\nWidth=2147483647\nHeight=-2147483648\nScaled=1",
        "Left=0\nTop=0\nWidth=99999999999\nHeight=0", "Left=x\nTop=-20\nWidth=0\nHeight=5000"}) {
    userState.Write("Tarnwerk/window.ini", std::string("[Window]\n") + place);
    auto* next = new ui::frmMain;
    EXPECT_TRUE(room.Contains(next->GetRect())) << place;
    EXPECT_GT(std::min(next->GetSize().x, next->GetSize().y), 400) << place;
    next->Destroy();
  }
}

TEST(Colours, OfTextsStandOutFromTheirGround) {
  EXPECT_NEAR(ui::Contrast(*wxBLACK, *wxWHITE), 21, 0.01);
  for (const wxColour& ground : {ui::CardColour(), ui::SideBarColour()}) {
    for (const wxColour& text :
         {ui::QuietText(), ui::LinkText(), ui::RunningText(), ui::FailedText()})
      EXPECT_GE(ui::Contrast(text, ground), 4.5)
          << text.GetAsString() << " on " << ground.GetAsString();
  }
  const wxColour dark(0x35, 0x35, 0x35), grey(0x80, 0x80, 0x80), blue(0x15, 0x53, 0x9e);
  for (const auto& [text, ground] :
       {std::pair(blue, dark), {dark, dark}, {grey, grey}, {grey, *wxWHITE}})
    EXPECT_GE(ui::Contrast(ui::Readable(text, ground), ground), 4.5) << text.GetAsString();
  EXPECT_EQ(ui::Readable(blue, *wxWHITE), blue);
}

TEST_F(MainWindow, ShowsATipAtAStartUntilTheUserHasHadEnough) {
  Home().Write("TIPOFDAY.TXT", "# a comment\r\n\r\nfirst\r\nsecond\r\n");
  window->Open();
  EXPECT_EQ(wxWindow::FindWindowByName("frmTip"), nullptr) << "the first steps come first";
  userState.Write("Tarnwerk/window.ini", "[Window]\nMaximized=0\n");
  auto* next = new ui::frmMain;
  next->Attach(
      {Program(), *control, web, ftp, mail, record, Environment().loop, Environment().protection},
      [] {});
  std::swap(window, next);
  next->Destroy();
  window->Open();
  EXPECT_EQ(Label("frmTip/lblTip"), "first");
  Push("frmTip/cmdNextTip");
  EXPECT_EQ(Label("frmTip/lblTip"), "second");
  Fill(*window, "frmTip/chkShowTips=off");
  Push("frmTip/cmdCloseTip");
  Until([] { return wxWindow::FindWindowByName("frmTip") == nullptr; });
  ui::frmTip::ShowUnlessTurnedOff(window, Program());
  EXPECT_EQ(wxWindow::FindWindowByName("frmTip"), nullptr);
}

TEST_F(MainWindow, SaysWhyAStartFailedUntilTheServiceRuns) {
  // Settings hold none of the ports that the system chooses.
  for (int port = 23117; !web.IsRunning(); port += 13) {
    const char* settings =
        "[WebServer Options]\nTCPPort=@\n[FtpServer Options]\nFtpPort=@\n"
        "[MailServer Options]\nSMTP Port=@\nPOP3 Port=@\n";
    Home().Write("Server.ini", text::ReplaceAll(settings, "@", std::to_string(port)));
    Push("cmdStartWebService");
  }
  const std::string taken = "端口 " + std::to_string(web.ListeningPort());
  Push("cmdCardStartFtp");
  EXPECT_EQ(Label("lblCardFtpState"), "启动失败");
  EXPECT_EQ(Label("lblFtpStart"), "Ftp服务启动失败。请检查您的FTP与网络设置。");
  EXPECT_THAT(Label("fraFtp/lblReason"), HasSubstr(taken + " 已由本程序的 Web 服务使用"));
  EXPECT_THAT(Label("lblCardFtpReason"), HasSubstr(taken));
  EXPECT_EQ(Label("fraFtp/cmdRemedy"), "更改端口(&Y)...");
  const auto selectsIn = [&](const char* button) {
    std::string field;
    InForm(button, [&](wxDialog&) {
      field = FocusedName();
      const auto* text = dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus());
      EXPECT_TRUE(text != nullptr && text->GetStringSelection() == text->GetValue()) << field;
    });
    return field;
  };
  EXPECT_EQ(Label("cmdCardFtpRemedy"), "更改端口...");
  for (const char* button : {"fraFtp/cmdRemedy", "cmdCardFtpRemedy"})
    EXPECT_EQ(selectsIn(button), "txtFtpPort");
  Push("cmdStopWebService");
  Push("cmdStartFtpService");
  EXPECT_TRUE(ftp.IsRunning());
  EXPECT_EQ(Label("fraFtp/lblReason") + Label("fraFtp/cmdRemedy") + Label("lblCardFtpReason"), "");
  for (const char* user : {"FTP 服务", "SMTP 服务"}) {
    Push("cmdStartMailService");
    EXPECT_THAT(Label("fraMail/lblReason"), HasSubstr(taken + " 已由本程序的 " + user + "使用"));
    EXPECT_EQ(selectsIn("fraMail/cmdRemedy"), "txtPop3Port");
    if (ftp.IsRunning()) Push("cmdStopFtpService");
  }
  const std::error_code forbidden = std::make_error_code(std::errc::permission_denied);
  window->fraFtp->SetDiagnosis(core::Explain(ServiceKind::kFtp, {forbidden, 21}, {}, {"/t"}));
  EXPECT_EQ(Label("fraFtp/cmdRemedy"), "复制命令(&Y)");
  const std::error_code inUse = std::make_error_code(std::errc::address_in_use);
  window->fraWeb->SetDiagnosis(core::Explain(ServiceKind::kWeb, {inUse, 80}, {}, {"/t"}));
  EXPECT_EQ(Label("fraWeb/cmdRemedy"), "再试一次(&Y)");
  Push("fraWeb/cmdRemedy");
  EXPECT_TRUE(web.IsRunning());
}

TEST_F(MainWindow, SaysThatTheSettingsCannotBeReadBeforeAnyStartAndWhileAServiceRuns) {
  Push("cmdStartFtpService");
  const std::string whole = Home().Read("Server.ini");
  Home().Write("Server.ini", "[FtpServer Options]\r\nFtpServer Upl");
  for (const char* page : {"ImgWeb", "imgFtp"}) Click(page);
  EXPECT_THAT(Label("fraWeb/lblReason"), HasSubstr("Server.ini"));
  EXPECT_THAT(Label("fraFtp/lblReason"), HasSubstr("Server.ini"));
  EXPECT_TRUE(IsVisible("lblCardWebReason") && !IsVisible("lblCardFtpReason"));
  EXPECT_EQ(ftp.RootDir(), Home().Text("ftp"));
  Home().Write("Server.ini", whole);
  for (const char* page : {"ImgWeb", "imgFtp"}) Click(page);
  EXPECT_EQ(Label("fraWeb/lblReason") + Label("fraFtp/lblReason"), "");
}

TEST_F(MainWindow, ShowsADownloadAndTheTrafficDisconnectsItAndShowsWhatBecameOfItAndTheLog) {
  Home().Write("www/big.bin", std::string(4 << 20, 'x'));
  window->Open();
  Click("ImgWeb");
  Push("cmdStartWebService");
  dynamic_cast<wxNotebook&>(Find("fraWeb/tabs")).SetSelection(1);
  auto& list = dynamic_cast<ui::ConnectionList&>(Find("fraWeb/lstConnections"));
  const auto shown = [&](std::size_t column) { return list.Cells(0).at(column); };
  const auto traffic = [&] { return window->stbInfo->TrafficText(); };
  Client client(web.ListeningPort());
  client.Send("GET /big.bin HTTP/1.0\r\n\r\n");
  ASSERT_TRUE(Until([&] { return list.RowCount() == 1 && std::atoi(shown(2).c_str()) > 0; }));
  EXPECT_LT(std::atoi(shown(2).c_str()), 100);
  EXPECT_TRUE(shown(0).starts_with("127.0.0.1")) << "perhaps with its name";
  EXPECT_EQ(shown(1), "下载 big.bin");
  EXPECT_THAT(shown(3), testing::EndsWith(" / 4.0 MB"));
  EXPECT_TRUE(Until([&] { return traffic().ends_with("KB/s"); }));
  wxDataViewItemArray rows;
  list.GetModel()->GetChildren({}, rows);
  list.Select(rows.at(0));
  EXPECT_TRUE(Until([&] { return Find("fraWeb/cmdDisconnect").IsEnabled(); }));
  Push("fraWeb/cmdDisconnect");
  EXPECT_TRUE(Until([&] { return list.RowCount() == 0; }));
  dynamic_cast<wxNotebook&>(Find("fraWeb/tabs")).SetSelection(2);
  const auto& recent = dynamic_cast<ui::RecentList&>(Find("fraWeb/lstRecent"));
  EXPECT_TRUE(Until([&] { return recent.GetItemCount() == 1; }));
  EXPECT_EQ(recent.Cell(0, 2) + " " + recent.Cell(0, 5), "下载 big.bin 已被断开");
  Fill(*window, "fraWeb/txtFilter=完成");
  EXPECT_TRUE(Until([&] { return recent.GetItemCount() == 0; }));
  dynamic_cast<wxNotebook&>(Find("fraWeb/tabs")).SetSelection(3);
  EXPECT_TRUE(Until([&] { return traffic() == "接收 0 B/s  发送 0 B/s"; }));
  Home().Write("Web.log", "一\r\n二\r\n");
  EXPECT_TRUE(Until([&] { return List("fraWeb/lstLatest").GetItemCount() == 2; }));
}

TEST_F(MainWindow, ExplainsTheErrorLogAndCountsTheLinesThatTheUserHasNotSeen) {
  const std::string log = Home().Text("RunErr.Log");
  for (const char* message : {"IndexFN.Log: x\r\n", "Address already in use"})
    Program().errors.LogError(message);
  window->Open();
  EXPECT_EQ(Label("lblProblemsIcon"), "出了什么问题（2）");
  ChooseItem(ui::mnuViewProblems);
  const auto& list = dynamic_cast<ui::ProblemList&>(Find("lstProblems"));
  EXPECT_EQ(Label("lblProblemsIcon") + "，" + list.Cell(0, 1) + "，" + list.Cell(1, 1),
            "出了什么问题，其他，Web 服务");
  EXPECT_THAT(Contents(*window, "txtProblem"), HasSubstr("错误: Address already in use"));
  Program().errors.LogError("third");
  EXPECT_TRUE(Until([&] { return list.GetItemCount() == 3; }));
  EXPECT_THAT(Contents(*window, "txtProblem"), HasSubstr("Address")) << "still selected";
  Click("ImgWeb");
  Program().errors.LogError("fourth");
  EXPECT_EQ(ui::UnseenProblems(log).Count(), "1")
      << "at the next start, because three have been shown";
  userState.Write("Tarnwerk/window.ini", "");
  EXPECT_EQ(ui::UnseenProblems(log).Count(), "") << "nothing is known of an old log";
}

TEST_F(MainWindow, AsksBeforeItCutsAClientOffUntilTheUserWantsNoQuestion) {
  Push("cmdStartAll");
  Push("cmdStopWebService");
  EXPECT_EQ(boxes.Take(), "") << "nobody is connected";
  Client client(ftp.ListeningPort());
  ASSERT_TRUE(Until([&] { return !ftp.Connections().empty(); }));
  const std::string question = "?Tarnwerk: 1 个人已连接。\n现在";
  for (const char* button : {"cmdStopFtpService", "cmdStopAll"}) {
    Push(button);
    EXPECT_EQ(boxes.Take(), question + "停止服务会断开他们。 [y/n]");
    EXPECT_TRUE(ftp.IsRunning());
  }
  boxes.Plan(wxID_NO);
  boxes.Plan(wxID_YES);
  window->Close();
  EXPECT_EQ(closed, 0);
  ChooseItem(ui::mnuExit);
  EXPECT_EQ(closed, 1);
  EXPECT_THAT(boxes.Take(), HasSubstr(question + "退出会断开他们。 [y/n]"));
  settings::Remember("Questions", "CutOff", 0);
  Push("cmdStopFtpService");
  EXPECT_FALSE(ftp.IsRunning());
  EXPECT_EQ(boxes.Take(), "");
}

TEST_F(MainWindow, OffersToMakeAMissingRoot) {
  const std::string root = Home().Path("new/site").string();
  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=80\nWebRootDir=" + root + "\n");
  window->Open();
  Click("ImgWeb");
  EXPECT_NE(Label("fraWeb/lblRootMissing"), "");
  Push("fraWeb/cmdMakeRoot");
  EXPECT_TRUE(Home().Has("new/site"));
  EXPECT_EQ(Label("fraWeb/lblRootMissing") + Label("fraWeb/cmdMakeRoot"), "");
}

}  // namespace
}  // namespace test
