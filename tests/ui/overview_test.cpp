// What the window adds to what service control says: why a start failed, what goes on, how others
// reach this machine, what to do first.

#include <wx/button.h>
#include <wx/notebook.h>

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <stdexcept>

#include <chrono>

#include "platform/local_addresses.h"
#include "tests/ui/main_window_fixture.h"
#include "ui/controls/log_panel.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/live_panel.h"
#include "ui/pages/mail_user_list.h"
#include "ui/window/status_bar.h"

namespace test {
namespace {

using asio::ip::tcp;

class Overview : public MainWindowFixture {
 protected:
  std::string LabelIn(wxWindow& page, const std::string& name) {
    return ui::Typed(Find(page, name).GetLabel());
  }
  static bool Shows(wxWindow& page, const std::string& name) { return Find(page, name).IsShown(); }
  static bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }
  // The second tab of a page.
  static void ShowLive(ui::ServiceFrame& page) {
    auto& tabs = dynamic_cast<wxNotebook&>(Find(page, "tabs"));
    tabs.SetSelection(1);
  }

  // On a port that a setting can hold: those that the system chooses are mostly above.
  tcp::acceptor AnyListener() {
    for (std::uint16_t port = 23117; port < 32000; port += 13) {
      tcp::acceptor listener(context_, tcp::v4());
      asio::error_code error;
      listener.bind({tcp::v4(), port}, error);
      if (!error) listener.listen(1, error);
      if (!error) return listener;
    }
    throw std::runtime_error("no port");
  }

  asio::io_context context_;
};

TEST_F(Overview, SaysWhoHasThePortAndForgetsItOnceTheServiceRuns) {
  tcp::acceptor other = AnyListener();
  const int port = other.local_endpoint().port();
  const std::string settings =
      "[WebServer Options]\nDNS=x\nWebRootDir=" + Home().Path("www").string() + "\nTCPPort=";
  Home().Write("Server.ini", settings + std::to_string(port) + "\n");
  MakeWindow();
  EXPECT_FALSE(Shows(*Window().fraWeb, "lblReason"));
  Push("cmdStartWebService");
  EXPECT_TRUE(Shows(*Window().fraWeb, "lblReason"));
  const std::string reason = LabelIn(*Window().fraWeb, "lblReason");
  EXPECT_TRUE(Has(reason, "端口 " + std::to_string(port) + " 已被“ui_window_test")) << reason;
  EXPECT_TRUE(Has(Label("lblCardWebReason"), std::to_string(port)));
  EXPECT_TRUE(IsVisible("lblCardWebReason"));
  other.close();
  Push("cmdStartWebService");
  EXPECT_TRUE(web->IsRunning());
  EXPECT_FALSE(Shows(*Window().fraWeb, "lblReason"));
  EXPECT_FALSE(Shows(*Window().fraWeb, "cmdRemedy"));
  EXPECT_FALSE(IsVisible("lblCardWebReason"));
}

TEST_F(Overview, SaysThatTheSettingsCannotBeReadBeforeAnyStartAndWhileAServiceRuns) {
  MakeWindow();
  Push("cmdStartFtpService");
  ASSERT_TRUE(ftp->IsRunning());
  const std::string upload = ftp->Options().uploadDir;
  const std::string good = Home().Read("Server.ini");
  Home().Write("Server.ini", "[FtpServer Options]\r\nFtpServer Upl");
  for (const char* page : {"ImgWeb", "imgFtp"}) Click(page);
  EXPECT_TRUE(Has(LabelIn(*Window().fraWeb, "lblReason"), "Server.ini"));
  EXPECT_TRUE(Has(LabelIn(*Window().fraFtp, "lblReason"), "Server.ini"));
  EXPECT_TRUE(IsVisible("lblCardWebReason"));
  EXPECT_FALSE(IsVisible("lblCardFtpReason"));
  EXPECT_TRUE(ftp->IsRunning());
  EXPECT_EQ(ftp->RootDir(), Home().Text("ftp"));
  EXPECT_EQ(ftp->Options().uploadDir, upload);
  Home().Write("Server.ini", good);
  for (const char* page : {"ImgWeb", "imgFtp"}) Click(page);
  EXPECT_FALSE(Shows(*Window().fraWeb, "lblReason"));
  EXPECT_FALSE(Shows(*Window().fraFtp, "lblReason"));
}

TEST_F(Overview, AnUnusablePortLeadsToTheOptions) {
  Home().Write("Server.ini", "[FtpServer Options]\nFtpPort=no number\n");
  MakeWindow();
  Push("cmdCardStartFtp");
  EXPECT_EQ(Label("lblCardFtpState"), "启动失败");
  EXPECT_EQ(Label("lblFtpStart"), "Ftp服务启动失败。请检查您的FTP与网络设置。");
  EXPECT_TRUE(IsVisible("cmdStartFtpService"));
  EXPECT_TRUE(Has(LabelIn(*Window().fraFtp, "lblReason"), "不是有效的数字"));
  bool opened = false;
  Later([&] {
    wxWindow* form = wxWindow::FindWindowByName("frmFtpOptions");
    opened = form != nullptr;
    if (opened) dynamic_cast<wxDialog*>(form)->EndModal(wxID_CANCEL);
  });
  Press(*Window().fraFtp, "cmdRemedy");
  EXPECT_TRUE(opened);
}

TEST_F(Overview, MakesAMissingRootDirectory) {
  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=0\nWebRootDir=" +
                                 Home().Path("new/site").string() + "\n");
  MakeWindow();
  Click("ImgWeb");
  EXPECT_TRUE(Shows(*Window().fraWeb, "lblRootMissing"));
  Press(*Window().fraWeb, "cmdMakeRoot");
  EXPECT_TRUE(Home().Has("new/site"));
  EXPECT_FALSE(Shows(*Window().fraWeb, "lblRootMissing"));
  EXPECT_FALSE(Shows(*Window().fraWeb, "cmdMakeRoot"));
}

TEST_F(Overview, ShowsADownloadWithItsProgressWhileItRuns) {
  constexpr std::size_t kSize = 800 << 10;  // some seconds at the pace of the server
  Home().Write("www/big.bin", std::string(kSize, 'x'));
  MakeWindow();
  Window().Open();
  Click("ImgWeb");
  Push("cmdStartWebService");
  ShowLive(*Window().fraWeb);
  const ui::ConnectionList& list = *Window().fraWeb->Live().lstConnections;
  EXPECT_TRUE(list.Rows().empty());
  tcp::socket client(context_);
  client.connect({asio::ip::address_v4::loopback(), web->ListeningPort()});
  asio::write(client, asio::buffer(std::string("GET /big.bin HTTP/1.0\r\n\r\n")));
  std::string bytes(1 << 20, '\0');
  ASSERT_TRUE(Until([&] { return web->Connections().size() == 1; }));
  client.non_blocking(true);
  std::size_t taken = 0;
  const auto take = [&] {
    asio::error_code error;
    taken += client.read_some(asio::buffer(bytes), error);
  };
  ASSERT_TRUE(Until([&] {
    take();
    return list.Rows().size() == 1 && list.Rows()[0][5].size() > 2;  // two digits
  }));
  const ui::ConnectionList::Row row = list.Rows()[0];
  EXPECT_EQ(row[0], "HTTP 1");
  EXPECT_EQ(row[1], "127.0.0.1");
  EXPECT_EQ(row[3], "GET /big.bin");
  EXPECT_NE(row[5], "100%");
  EXPECT_TRUE(Until([&] { return Has(Window().stbInfo->TrafficText(), "KB/s"); }));
  EXPECT_TRUE(Until([&] {
    take();
    return list.Rows().empty();
  }));
  EXPECT_EQ(taken, kSize);
}

TEST_F(Overview, ShowsTheLinesThatComeToTheLog) {
  MakeWindow();
  Window().Open();
  Click("ImgWeb");
  Push("cmdStartWebService");
  ShowLive(*Window().fraWeb);
  const ui::LogList& log = *Window().fraWeb->Live().lstLatest;
  for (int lines = 1; lines <= 2; ++lines) {
    tcp::socket client(context_);
    client.connect({asio::ip::address_v4::loopback(), web->ListeningPort()});
    asio::write(client, asio::buffer(std::string("POST /refused.cgi HTTP/1.0\r\n\r\n")));
    ASSERT_TRUE(Until([&] { return log.GetItemCount() == lines; }));
  }
  EXPECT_TRUE(Has(log.Tail().lines.back(), "请求方法：POST"));
}

TEST_F(Overview, LooksAtNothingWhileItCannotBeSeen) {
  MakeWindow();
  Push("cmdStartWebService");
  Click("ImgWeb");
  ShowLive(*Window().fraWeb);
  const ui::ConnectionList& list = *Window().fraWeb->Live().lstConnections;
  tcp::socket client(context_);
  client.connect({asio::ip::address_v4::loopback(), web->ListeningPort()});
  ASSERT_TRUE(Until([&] { return web->Connections().size() == 1; }));
  const auto later = std::chrono::steady_clock::now() + std::chrono::seconds(1);
  Until([&] { return std::chrono::steady_clock::now() > later; });
  EXPECT_TRUE(list.Rows().empty());
  Window().Open();
  EXPECT_TRUE(Until([&] { return list.Rows().size() == 1; }));
}

TEST_F(Overview, ShowsHowOthersReachAServiceWhileItRuns) {
  MakeWindow();
  Push("cmdStartFtpService");
  const bool hasNetwork = !platform::LocalAddresses().empty();
  EXPECT_EQ(Shows(*Window().fraFtp, "lblReach"), hasNetwork);
  if (hasNetwork) {
    EXPECT_TRUE(Has(LabelIn(*Window().fraFtp, "lblReach"),
                    "ftp://" + platform::LocalAddresses().front() + ":" +
                        std::to_string(ftp->ListeningPort()) + "/"));
  }
  Push("cmdStopFtpService");
  EXPECT_FALSE(Shows(*Window().fraFtp, "lblReach"));
  EXPECT_FALSE(Shows(*Window().fraFtp, "cmdCopyReach"));
}

TEST_F(Overview, NotesThatBrowsersWantPort80) {
  MakeWindow();
  Push("cmdStartWebService");
  EXPECT_TRUE(Shows(*Window().fraWeb, "lblPortNote"));
  Push("cmdStopWebService");
  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=80\n");
  Window().Open();
  Click("ImgWeb");
  EXPECT_FALSE(Shows(*Window().fraWeb, "lblPortNote"));
}

TEST_F(Overview, FirstStepsGoAwayAsTheyAreDone) {
  Home().Write("Server.ini", "[WebServer Options]\nWebRootDir=" + Home().Path("site").string() +
                                 "\n[MailServer Options]\nMailServer Root=" +
                                 Home().Path("mail").string() + "\n");
  MakeWindow();
  const auto left = [&] {
    std::string names;
    for (const char* name : {"cmdPutPage", "cmdFirstMailUser", "cmdAllowUploads"}) {
      if (IsVisible(name)) names += std::string(name) + " ";
    }
    return names;
  };
  EXPECT_EQ(left(), "cmdPutPage cmdFirstMailUser cmdAllowUploads ");
  Home().Write("site/index.htm", "home");
  Home().Write("mail/User/li/UserInfo.ini", "");
  Window().Open();
  EXPECT_EQ(left(), "cmdAllowUploads ");
  EXPECT_TRUE(IsVisible("fraFirstSteps"));
  Push("cmdDismissSteps");
  EXPECT_FALSE(IsVisible("fraFirstSteps"));
  Click("ImgWeb");
  Click("picSelect");
  EXPECT_FALSE(IsVisible("fraFirstSteps"));
}

TEST_F(Overview, TellsHowManyMessagesGoWithAMailUser) {
  Home().Write("mail/User/li/UserInfo.ini", "");
  Home().Write("mail/User/li/Message_1.eml", "a");
  Home().Write("mail/User/li/Message_2.EML", "b");
  Home().Write("mail/User/wang/UserInfo.ini", "");
  MakeWindow();
  Click("ImgMail");
  EXPECT_EQ(Label("lblMessages"), " ");
  const auto shownFor = [&](long row) {
    Window().content->lvMailUser->SetItemState(row, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    return Label("lblMessages");
  };
  EXPECT_TRUE(Has(shownFor(0), "“li”有 2 封邮件"));
  EXPECT_EQ(shownFor(1), "用户“wang”没有邮件。");
  boxes.Plan(wxID_YES);
  Push("cmdDelMailUser");
  EXPECT_EQ(Label("lblMessages"), " ");
}

}  // namespace
}  // namespace test
