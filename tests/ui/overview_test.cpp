// The overview and what others need: the addresses, the test of the reach, the first steps, and who
// is connected.

#include <wx/clipbrd.h>
#include <wx/hyperlink.h>
#include <wx/notebook.h>

#include <vector>

#include "core/local_network.h"
#include "core/service_addresses.h"
#include "platform/local_addresses.h"
#include "tests/ui/main_window_fixture.h"
#include "text/strings.h"

namespace test {
namespace {

using core::ServiceKind;
using testing::HasSubstr;

std::string Clipboard() {
  const wxClipboardLocker clipboard;
  wxTextDataObject text;
  return wxTheClipboard->GetData(text) ? ui::Typed(text.GetText()) : "";
}

TEST_F(MainWindow, ShowsHowOthersReachAServiceWhileItRunsAndCopiesTheLikeliestAddress) {
  const auto machines = core::LikelyFirst(platform::LocalAddresses());
  if (machines.empty()) GTEST_SKIP() << "this machine is in no network";
  Push("cmdStartFtpService");
  const auto reached = [&](const std::string& machine) {
    return core::ReachedAt(ServiceKind::kFtp, machine, ftp.PortsInUse());
  };
  for (const std::string& machine : machines)
    EXPECT_THAT(Label("fraFtp/lblReach"), HasSubstr(reached(machine)));
  EXPECT_THAT(Label("fraFtp/lblReach"), testing::StartsWith(reached(machines[0])));
  EXPECT_EQ(Label("lblCardFtpReach") + Label("lblCardFtpReach2"), reached(machines[0]));
  EXPECT_TRUE(IsVisible("cmdGiveAddress"));
  for (const char* button : {"cmdCardFtpCopy", "fraFtp/cmdCopyReach"}) {
    Push(button);
    EXPECT_EQ(Clipboard(), reached(machines[0])) << button;
  }
  EXPECT_FALSE(IsVisible("cmdGiveAddress")) << "ticked";
  Push("cmdStopFtpService");
  EXPECT_EQ(Label("fraFtp/lblReach") + Label("fraFtp/cmdCopyReach") + Label("lblCardFtpReach"), "");
}

TEST_F(MainWindow, TestsTheReachOfEveryServiceWithoutATraceOrARealClientLost) {
  const bool isInNetwork = !platform::LocalAddresses().empty();
  const std::pair<std::string, ServiceKind> kPages[] = {{"fraWeb", ServiceKind::kWeb},
                                                        {"fraFtp", ServiceKind::kFtp},
                                                        {"fraMail", ServiceKind::kMail}};
  const auto test = [&](const std::string& page) {
    Push(page + "/cmdTestReach");
    EXPECT_TRUE(Until([&] { return !Label(page + "/lblTest").starts_with("正在测试"); }));
    return Label(page + "/lblTest");
  };
  for (const auto& [page, service] : kPages) EXPECT_THAT(test(page), HasSubstr("服务没有运行"));
  Push("cmdStartAll");
  for (const auto& [page, service] : kPages) {
    EXPECT_THAT(test(page), HasSubstr(isInNetwork ? "测试通过" : "没有连接到网络")) << page;
    EXPECT_TRUE(Until([&] { return control->Of(service).Connections().empty(); }));
    EXPECT_TRUE(record.EntriesOf(service).empty()) << page;
  }
  EXPECT_EQ(Home().Read("Mail.log") + Home().Read("Web.log") + ErrorLog(), "");
  if (!isInNetwork) return;
  std::vector<std::unique_ptr<Client>> clients;
  while (ftp.HasRoomForATest()) {
    clients.push_back(std::make_unique<Client>(ftp.ListeningPort()));
    ASSERT_TRUE(Until([&] { return ftp.Connections().size() == clients.size(); }));
  }
  EXPECT_THAT(test("fraFtp"), HasSubstr("没有测试"));
  Push("fraWeb/cmdTestReach");
  Push("cmdStopWebService");
  EXPECT_EQ(Label("fraWeb/lblTest"), "") << "ended with its service";
}

TEST_F(MainWindow, FirstStepsLeadThroughWhatIsLeftUntilAllIsDone) {
  const auto left = [&] {
    std::string names;
    for (const char* each :
         {"cmdPutPage", "cmdFirstStart", "cmdStepForBrowsers", "cmdGiveAddress", "cmdProtect"})
      if (IsVisible("fraFirstSteps") && IsVisible(each)) names += std::string(" ") + each;
    return names;
  };
  EXPECT_EQ(left(), " cmdPutPage cmdFirstStart cmdStepForBrowsers cmdGiveAddress cmdProtect");
  EXPECT_TRUE(IsVisible("lblCardFtpWarning") && IsVisible("cmdCardMakeUploadFolder"));
  Home().Write("ftp/photo.jpg", "x");
  window->Open();
  EXPECT_EQ(left(), " cmdFirstStart cmdStepForBrowsers cmdGiveAddress cmdProtect");
  Push("cmdFirstStart");
  EXPECT_EQ(left(), " cmdStepForBrowsers cmdGiveAddress cmdProtect");
  EXPECT_NE(Find("cmdStepForBrowsers").GetClientData(), nullptr) << "the next one stands out";
  boxes.Plan(wxID_NO);
  boxes.Plan(wxID_YES);
  Push("cmdStepForBrowsers");
  EXPECT_TRUE(IsVisible("cmdStepForBrowsers") && !web.Options().answers.http);
  Push("cmdStepForBrowsers");
  EXPECT_TRUE(web.Options().answers.http);
  EXPECT_EQ(left(), " cmdGiveAddress cmdProtect");
  record.OnActivityEnded({"FTP", 1, "192.0.2.7", {}, {}});
  EXPECT_TRUE(Until([&] { return left() == " cmdProtect"; })) << "somebody came";
  Push("cmdCardMakeUploadFolder");
  EXPECT_TRUE(Home().Has("ftp/upload"));
  EXPECT_EQ(left(), "");
  EXPECT_FALSE(IsVisible("lblCardFtpWarning") || IsVisible("cmdCardMakeUploadFolder"));
  Push("cmdStopAll");
  EXPECT_FALSE(IsVisible("fraFirstSteps")) << "done for good";
}

TEST_F(MainWindow, FirstStepsOfferWhatBrowsersOnPort80DoNotNeedAndDoNotWaitForIt) {
  const std::string settings =
      text::ReplaceAll(Home().Read("Server.ini"), "TCPPort=0", "TCPPort=80");
  Home().Write("Server.ini", settings + "[Protection]\nConfine=1\n");
  Home().Write("ftp/photo.jpg", "x");
  web.LoadOptions();
  Environment().protection.Load();
  window->Open();
  EXPECT_TRUE(IsVisible("cmdStepForBrowsers"));
  EXPECT_EQ(Find("cmdStepForBrowsers").GetClientData(), nullptr);
  Push("cmdStartFtpService");
  record.OnActivityEnded({"FTP", 1, "192.0.2.7", {}, {}});
  EXPECT_TRUE(Until([&] { return !IsVisible("fraFirstSteps"); }));
}

TEST_F(MainWindow, FirstStepsStayAwayOnceTheyAreDismissed) {
  Push("cmdDismissSteps");
  window->Open();
  for (const char* page : {"ImgWeb", "picSelect"}) Click(page);
  EXPECT_FALSE(IsVisible("fraFirstSteps"));
}

TEST_F(MainWindow, TheLineThatSaysWhoIsConnectedLeadsToThem) {
  window->Open();
  Push("cmdStartAll");
  EXPECT_FALSE(Find("lblClients").IsEnabled());
  const Client client(ftp.ListeningPort());
  ASSERT_TRUE(Until([&] { return Label("lblClients") == "1 个人已连接"; }));
  EXPECT_TRUE(Find("lblClients").IsEnabled());
  wxHyperlinkEvent event(&Find("lblClients"), Find("lblClients").GetId(), "");
  Find("lblClients").ProcessWindowEvent(event);
  EXPECT_TRUE(IsVisible("fraFtp"));
  EXPECT_EQ(dynamic_cast<wxNotebook&>(Find("fraFtp/tabs")).GetSelection(), 1);
}

}  // namespace
}  // namespace test
