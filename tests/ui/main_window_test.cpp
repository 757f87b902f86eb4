#include <wx/evtloop.h>
#include <wx/hyperlink.h>
#include <wx/msgdlg.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <tuple>

#include "settings/manager_password.h"
#include "tests/ui/main_window_fixture.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/tip_of_the_day.h"
#include "ui/pages/folder_tree.h"
#include "ui/pages/mail_user_list.h"
#include "ui/window/status_bar.h"

namespace test {
namespace {

using core::ServiceKind;

class MainWindow : public MainWindowFixture {
 protected:
  // What the user's desktop is asked to open goes into a file. Linux only: elsewhere it is no
  // program.
  bool CatchWhatIsOpened() {
    if (wxGetOsVersion() != wxOS_UNIX_LINUX) return false;
    Home().Write("bin/xdg-open",
                 "#!/bin/sh\nprintf '%s\\n' \"$1\" >>'" + Home().Path("opened").string() + "'\n");
    std::filesystem::permissions(Home().Path("bin/xdg-open"), std::filesystem::perms::all);
    wxString path;
    wxGetEnv("PATH", &path);
    return wxSetEnv("PATH", ui::Shown(Home().Path("bin").string()) + ":" + path);
  }
  bool WereOpened(const std::string& targets) {
    return Until([&] { return Home().Read("opened") == targets; });
  }
  void ClickAddress(const std::string& name) {
    wxWindow& link = Find(Window(), name);
    wxHyperlinkEvent event(&link, link.GetId(), "");
    link.ProcessWindowEvent(event);
  }
};

TEST_F(MainWindow, ComesUpOnTheOverviewWithEverythingOff) {
  MakeWindow();
  EXPECT_EQ(Window().GetTitle(), "Tarnwerk");
  EXPECT_EQ(Page(), "fraWelcome");
  EXPECT_EQ(Window().stbInfo->PanelText(ServiceKind::kMail), "Mail服务：OFF");
  EXPECT_EQ(Label("lblFtpInfo"), "点击“启动”您可以开始FTP服务。");
  EXPECT_TRUE(HasItem(ui::mnuShowSystemTray) && !HasItem(ui::mnuShowFrmMain));
}

TEST_F(MainWindow, StartsAndStopsAServiceByItsButtonItsMenuItemAndItsCard) {
  MakeWindow();
  const auto isShownRunning = [&](bool running) {
    EXPECT_EQ(web->IsRunning(), running);
    EXPECT_EQ(IsVisible("cmdStopWebService"), running);
    EXPECT_EQ(IsVisible("cmdStartWebService"), !running);
    EXPECT_EQ(IsVisible("cmdCardStopWeb"), running);
    EXPECT_EQ(HasItem(ui::mnuStopWeb), running);
    EXPECT_EQ(HasItem(ui::mnuStartWeb), !running);
    EXPECT_EQ(Window().stbInfo->PanelIsOn(ServiceKind::kWeb), running);
    EXPECT_EQ(Label("lblWebStart") + Label("lblWebAddress"),
              (running ? "Web发布已经启动。 您的主页在：" : "Web服务已经停止。您的主页是： ") +
                  std::string("Http://home.test"));
    EXPECT_EQ(Find(Window(), "lblWebAddress").IsThisEnabled(), running);
  };
  for (const char* button : {"cmdStartWebService", "cmdCardStartWeb"}) {
    Push(button);
    isShownRunning(true);
    ChooseItem(ui::mnuStopWeb);
    isShownRunning(false);
  }
  for (const char* button : {"cmdStopWebService", "cmdCardStopWeb"}) {
    ChooseItem(ui::mnuStartWeb);
    isShownRunning(true);
    Push(button);
    isShownRunning(false);
  }
}

TEST_F(MainWindow, StartsAndStopsAllWithOneButton) {
  MakeWindow();
  Push("cmdStartAll");
  EXPECT_TRUE(web->IsRunning() && ftp->IsRunning() && mail->IsRunning());
  EXPECT_EQ(Label("lblFtpAddress"), "ftp://home.test");
  EXPECT_EQ(Label("lblMailAddress"), "SMTP:home.test  POP3:home.test");
  EXPECT_FALSE(Find(Window(), "cmdStartAll").IsEnabled());
  Push("cmdStopAll");
  EXPECT_FALSE(web->IsRunning() || ftp->IsRunning() || mail->IsRunning());
  EXPECT_EQ(Label("lblFtpAddress"), "home.test");
  EXPECT_FALSE(Find(Window(), "cmdStopAll").IsEnabled());
}

TEST_F(MainWindow, EverySelectorShowsItsPage) {
  MakeWindow();
  const std::pair<const char*, const char*> pages[] = {
      {"ImgWeb", "fraWeb"},         {"imgFtp", "fraFtp"},        {"ImgMail", "fraMail"},
      {"picSelect", "fraWelcome"},  {"lblWebIcon", "fraWeb"},    {"lblFtpIcon", "fraFtp"},
      {"lblMailIcon", "fraMail"},   {"fraWebService", "fraWeb"}, {"fraFtpService", "fraFtp"},
      {"fraMailService", "fraMail"}};
  for (const auto& [selector, page] : pages) {
    Click(selector);
    EXPECT_EQ(Page(), page) << selector;
  }
  std::string chosen;
  for (const auto item : {ui::mnuViewWeb, ui::mnuViewFtp, ui::mnuViewEmail, ui::mnuViewWelcome}) {
    ChooseItem(item);
    chosen += Page() + " ";
  }
  Push("cmdCardWebPage");
  EXPECT_EQ(chosen + Page(), "fraWeb fraFtp fraMail fraWelcome fraWeb");
}

TEST_F(MainWindow, ASelectorLoadsTheSettingsAnewAndLeavesTheRunningServiceItsPort) {
  MakeWindow();
  Push("cmdStartWebService");
  const auto port = web->ListeningPort();
  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=81\nDNS=x\nWebRootDir=" +
                                 Home().Path("moved").string() + "\n");
  Click("ImgWeb");
  EXPECT_EQ(Label("lblWebRootDir"), Home().Path("moved").string());
  EXPECT_EQ(web->Options().WebPort, 81);
  EXPECT_EQ(web->ListeningPort(), port);
}

TEST_F(MainWindow, AddressesOpenWithTheirPortsAndOnlyWhileTheServiceRuns) {
  if (!CatchWhatIsOpened()) GTEST_SKIP() << "only Linux opens by a program";
  MakeWindow();
  std::string opened;
  for (const auto& [label, url] : {std::pair("lblWebAddress", "http://home.test:0"),
                                   std::pair("lblFtpAddress", "ftp://home.test:0")}) {
    ClickAddress("lblWebAddress");
    ClickAddress("lblFtpAddress");
    Push("cmdStartAll");
    ClickAddress(label);
    opened += std::string(url) + "\n";
    EXPECT_TRUE(WereOpened(opened)) << Home().Read("opened");
    Push("cmdStopAll");
  }
}

TEST_F(MainWindow, ADomainIsAskedForAndShownButNotTakenOver) {
  MakeWindow();
  const std::tuple<const char*, const char*, const char*> questions[] = {
      {"cmdWebDns", "lblWebAddress", "Http://new.test"},
      {"cmdFtpDns", "lblFtpAddress", "ftp://new.test"},
      {"cmdEmailDns", "lblMailAddress", "SMTP:new.test  POP3:new.test"}};
  for (const auto& [button, label, shown] : questions) {
    boxes.Plan(wxID_OK, "new.test");
    Push(button);
    EXPECT_EQ(boxes.TakeOnly().proposed, "home.test");
    EXPECT_EQ(Label(label), shown);
    boxes.Plan(wxID_CANCEL, "other.test");
    Push(button);
    boxes.TakeOnly();
    EXPECT_EQ(Label(label), shown);
  }
  EXPECT_EQ(web->Domain(), "home.test");
  EXPECT_FALSE(Home().Has("hosts"));
}

TEST_F(MainWindow, ShowsTheWebFolderWithSubfoldersFirst) {
  Home().Write("www/zoo/inner.htm", "");
  Home().Write("www/Art/picture.png", "");
  Home().Write("www/B.htm", "");
  Home().Write("www/a.htm", "");
  MakeWindow();
  Click("ImgWeb");
  ui::FolderTree& tree = *Window().content->tvWebDir;
  ASSERT_TRUE(Until([&] { return tree.IsComplete(); }));
  const auto children = [&](wxTreeItemId parent) {
    std::string names;
    wxTreeItemIdValue position;
    for (auto child = tree.GetFirstChild(parent, position); child.IsOk();
         child = tree.GetNextChild(parent, position)) {
      names += ui::Typed(tree.GetItemText(child)) + " ";
    }
    return names;
  };
  const wxTreeItemId top = tree.GetRootItem();
  EXPECT_EQ(children(top), "Art zoo a.htm B.htm index.htm ");
  EXPECT_TRUE(tree.IsExpanded(top));
  wxTreeItemIdValue position;
  const wxTreeItemId art = tree.GetFirstChild(top, position);
  EXPECT_NE(tree.GetItemImage(art), tree.GetItemImage(art, wxTreeItemIcon_Expanded));
  tree.Expand(art);
  ASSERT_TRUE(Until([&] { return tree.IsComplete(); }));
  EXPECT_EQ(children(art), "picture.png ");
  tree.SelectItem(art);
  EXPECT_EQ(tree.SelectedPath(), Home().Text("www") + "\\Art");
}

// Nothing waits for the whole: each event does a piece, and other events come in between.
TEST_F(MainWindow, AHugeFolderIsShownPieceByPiece) {
  constexpr int kFiles = 5000;
  for (int i = 0; i < kFiles; ++i) Home().Write("www/many/" + std::to_string(i) + ".htm", "");
  Home().Write("Server.ini",
               "[WebServer Options]\nWebRootDir=" + Home().Path("www/many").string() + "\n");
  MakeWindow();
  Click("ImgWeb");
  ui::FolderTree& tree = *Window().content->tvWebDir;
  const auto shown = [&] { return tree.GetChildrenCount(tree.GetRootItem()); };
  std::size_t steps = 0;
  std::size_t last = 0;
  ASSERT_TRUE(Until([&] {
    if (shown() != last) ++steps;
    last = shown();
    return tree.IsComplete();
  }));
  EXPECT_EQ(shown(), static_cast<std::size_t>(kFiles));
  EXPECT_GE(steps, 5U);
}

TEST_F(MainWindow, ListsAddsEditsAndDeletesMailUsers) {
  MakeWindow();
  Click("ImgMail");
  ui::MailUserList& list = *Window().content->lvMailUser;
  EXPECT_EQ(list.GetItemCount(), 0);
  ASSERT_FALSE(ModMail::SaveMailUser(mail->RootDir(), {"wang", "secret"}));
  Click("picSelect");
  Click("ImgMail");
  ASSERT_EQ(list.GetItemCount(), 1);
  EXPECT_EQ(list.GetColumnCount(), 2);
  EXPECT_EQ(list.UserAt(0).password, "secret");

  const auto inTheDialog = [&](const auto& action) {
    Later([=, this] { action(*wxWindow::FindWindowByName("frmEmailUsers")); });
  };
  inTheDialog([](wxWindow& form) {
    EXPECT_EQ(TextIn(form, "txtUser"), "");
    Type(form, "txtUser", "li");
    Type(form, "txtPass", "1234");
    Press(form, "OKButton");
  });
  Push("cmdAddMailUser");
  ASSERT_EQ(list.GetItemCount(), 2);
  inTheDialog([](wxWindow& form) {
    EXPECT_EQ(ui::Typed(form.GetLabel()), "编辑用户");
    EXPECT_EQ(TextIn(form, "txtUser") + "/" + TextIn(form, "txtPass"), "li/1234");
    Press(form, "CancelButton");
  });
  Push("cmdEditMailUser");

  Push("cmdDelMailUser");
  EXPECT_EQ(boxes.TakeOnly().text, "请选择要删除的用户！");
  list.SetItemState(0, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
  for (const int answer : {wxID_NO, wxID_YES}) {
    EXPECT_TRUE(Home().Has("mail/User/li"));
    boxes.Plan(answer);
    Push("cmdDelMailUser");
    const Box question = boxes.TakeOnly();
    EXPECT_EQ(question.text, "确实要删除该用户吗？");
    EXPECT_TRUE(question.HasStyle(wxYES_NO));
  }
  EXPECT_EQ(list.GetItemCount(), 1);
  EXPECT_FALSE(Home().Has("mail/User/li"));
}

TEST_F(MainWindow, CanAlwaysBeFoundAgainAndEndsOnlyWhenTheUserEndsIt) {
  MakeWindow();
  Window().Open();
  ChooseItem(ui::mnuShowSystemTray);
  // Minimised where there is no tray.
  EXPECT_TRUE(Window().IsShown() || Window().IsInTray());
  Window().Close();
  EXPECT_EQ(closed, 1);
  ChooseItem(ui::mnuExit);
  EXPECT_EQ(closed, 2);
}

TEST_F(MainWindow, ClosesWhateverIsOpenWhenItIsToEnd) {
  MakeWindow();
  bool done = false;
  bool returned = false;
  Later([&] {
    EXPECT_NE(wxWindow::FindWindowByName("frmMailOptions"), nullptr);
    Window().CloseEverything([&] {
      EXPECT_TRUE(returned);
      done = true;
    });
  });
  Push("cmdMailOptions");
  returned = true;
  EXPECT_TRUE(Until([&] { return done; }));
  Push("cmdFtpOptions");  // no dialog opens any more
}

TEST_F(MainWindow, ComesBackWhereItWas) {
  MakeWindow();
  Window().Open();
  Window().SetSize(40, 50, 900, 700);
  Until([&] { return Window().GetSize() == wxSize(900, 700); });
  const wxRect place = Window().GetRect();
  bool done = false;
  Window().CloseEverything([&] { done = true; });
  EXPECT_TRUE(Until([&] { return done; }));
  auto* next = new ui::frmMain;
  EXPECT_EQ(next->GetSize(), place.GetSize());
  EXPECT_EQ(next->GetPosition(), place.GetPosition());
  next->Destroy();
}

TEST_F(MainWindow, IsShownOnlyToWhoKnowsTheManagerPassword) {
  MakeWindow();
  settings::SetManagerPassword(Program(), "sesame");
  const auto answer = [&](const std::string& password, const char* button) {
    Later([=] {
      wxWindow& form = *wxWindow::FindWindowByName("frmPassWord");
      Type(form, "txtPwd", password);
      Press(form, button);
    });
    Window().Open();
  };
  answer("sesame", "cmdCancel");
  EXPECT_FALSE(Window().IsShown());
  EXPECT_TRUE(Window().IsInTray() || closed == 1);
  answer("sesame", "cmdOK");
  EXPECT_TRUE(Window().IsShown());
}

TEST_F(MainWindow, ShowsATipAtAStartUntilTheUserHasHadEnough) {
  Home().Write("TIPOFDAY.TXT", "# a comment\r\n\r\nfirst\r\nsecond\r\n");
  MakeWindow();
  Window().Open();
  wxWindow* tip = wxWindow::FindWindowByName("frmTip");
  ASSERT_NE(tip, nullptr);
  const auto text = [&] { return ui::Typed(Find(*tip, "lblTip").GetLabel()); };
  EXPECT_EQ(text(), "first");
  Press(*tip, "cmdNextTip");
  EXPECT_EQ(text(), "second");
  Press(*tip, "cmdNextTip");
  EXPECT_EQ(text(), "first");
  Set(*tip, "chkShowTips", false);
  Press(*tip, "cmdCloseTip");
  Until([] { return wxWindow::FindWindowByName("frmTip") == nullptr; });
  ui::frmTip::ShowUnlessTurnedOff(&Window(), Program());
  EXPECT_EQ(wxWindow::FindWindowByName("frmTip"), nullptr);
}

}  // namespace
}  // namespace test
