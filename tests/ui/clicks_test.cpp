// How many clicks a user needs from the overview for what he wants most often.

#include <wx/hyperlink.h>
#include <wx/notebook.h>

#include "settings/autostart.h"
#include "tests/ui/main_window_fixture.h"

namespace test {
namespace {

using testing::HasSubstr;

class Clicks : public MainWindow {
 protected:
  Clicks() { window->Open(); }

  void Count(const std::string& button) {
    EXPECT_TRUE(Find(button).IsShownOnScreen() && Find(button).IsEnabled()) << button;
    Push(button);
    ++clicks_;
  }
  // In a menu, which is a click of its own.
  void Count(ui::MenuItem item) {
    ChooseItem(item);
    clicks_ += 2;
  }
  void CountLink(const std::string& link) {
    wxHyperlinkEvent event(&Find(link), Find(link).GetId(), "");
    Find(link).ProcessWindowEvent(event);
    ++clicks_;
  }
  // A button that opens a form, typing, and the form's main button.
  void CountForm(const std::string& opener, const std::string& fields) {
    EXPECT_TRUE(Enter(opener, fields)) << opener;
    clicks_ += 2;
  }

  int clicks_ = 0;
};

TEST_F(Clicks, PublishAPageByTwo) {
  Count("cmdPutPage");
  Home().Write("www/index.htm", "page");
  Count("cmdCardStartWeb");
  EXPECT_TRUE(web.IsRunning());
  EXPECT_LE(clicks_, 2);
}

TEST_F(Clicks, HavePhonesShowThePagesByTwo) {
  boxes.Plan(wxID_YES);
  Count("cmdStepForBrowsers");
  ++clicks_;  // the answer to its question
  EXPECT_TRUE(web.Options().answers.http);
  EXPECT_LE(clicks_, 2);
}

TEST_F(Clicks, ShareAnotherFolderByFour) {
  Home().Write("mine/photo.jpg", "x");
  Count("cmdCardFtpPage");
  boxes.Plan(wxID_OK, Home().Path("mine").string());
  Count("fraFtp/cmdChangeRoot");
  clicks_ += 1;  // the chooser's own button
  EXPECT_EQ(ftp.RootDir(), Home().Text("mine"));
  EXPECT_LE(clicks_, 4);
}

TEST_F(Clicks, ShowWhoDownloadsAndGiveTheAddressByOneEach) {
  Push("cmdStartAll");
  const Client client(ftp.ListeningPort());
  ASSERT_TRUE(Until([&] { return Label("lblClients") == "1 个人已连接"; }));
  if (IsVisible("cmdCardFtpCopy")) {
    Count("cmdCardFtpCopy");
    EXPECT_THAT(Label("lblCardFtpReach"), HasSubstr("ftp://"));
  }
  EXPECT_LE(clicks_, 1);
  clicks_ = 0;
  CountLink("lblClients");
  EXPECT_EQ(dynamic_cast<wxNotebook&>(Find("fraFtp/tabs")).GetSelection(), 1);
  EXPECT_LE(clicks_, 1);
}

TEST_F(Clicks, AddAMailboxByTwoAndReadAMessageByTwo) {
  Count("cmdCardMailPage");
  EXPECT_TRUE(InForm("fraMail/cmdAddMailUser", [](wxDialog& form) {
    Fill(form, "txtUser=li|txtPass=secret");
    PressEnterIn(form, "txtPass");
  }));
  ++clicks_;
  EXPECT_TRUE(Home().Has("mail/User/li/UserInfo.ini"));
  EXPECT_LE(clicks_, 2);

  Home().Write("mail/User/li/Message_1.eml", "Subject: hello\r\n\r\ntext\r\n.\r\n");
  Click("picSelect");
  clicks_ = 0;
  Count("cmdCardMailPage");
  wxListCtrl& messages = List("lstMessages");
  ASSERT_TRUE(Until([&] { return messages.GetItemCount() == 1; }));
  bool isRead = false;
  boxes.ScriptForm([&](wxDialog& form) {
    isRead = Find(form, "txtText").IsShown();
    form.EndModal(wxID_CANCEL);
  });
  wxListEvent event(wxEVT_LIST_ITEM_ACTIVATED, messages.GetId());
  event.m_itemIndex = 0;
  event.SetEventObject(&messages);
  messages.SetItemState(0, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
  messages.ProcessWindowEvent(event);
  clicks_ += 1;
  EXPECT_TRUE(isRead);
  EXPECT_LE(clicks_, 2);
}

TEST_F(Clicks, TellWhyAServiceDoesNotStartByNone) {
  Push("cmdStartWebService");
  Home().Write("Server.ini", "[FtpServer Options]\nFtpPort=" + std::to_string(web.ListeningPort()) +
                                 "\nFtpServer Root=x\n");
  Push("cmdCardStartFtp");
  EXPECT_THAT(Label("lblCardFtpReason"), HasSubstr("端口"));
}

TEST_F(Clicks, ChangeAPortAndHaveItHoldByFour) {
  Push("cmdStartFtpService");
  const int former = ftp.ListeningPort();
  Count("cmdCardFtpPage");
  const int next = former == 23456 ? 23457 : 23456;
  CountForm("fraFtp/cmdChangePort",
            "txtFtpPort=" + std::to_string(next) + "|txtFtpUploadDir=" + Home().Text("up"));
  Count("fraFtp/cmdRestart");
  EXPECT_EQ(ftp.ListeningPort(), next);
  EXPECT_LE(clicks_, 4);
}

TEST_F(Clicks, StartWithTheSystemByThreeAndQuitByOne) {
  Count(ui::mnuStartWithSystem);
  EXPECT_TRUE(settings::StartsWithSystem(Program()));
  EXPECT_LE(clicks_, 3);
  clicks_ = 0;
  window->Close();
  clicks_ += 1;
  EXPECT_EQ(closed, 1);
  EXPECT_LE(clicks_, 1);
}

}  // namespace
}  // namespace test
