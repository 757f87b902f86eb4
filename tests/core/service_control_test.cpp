#include "core/service_control.h"

#include <map>

#include "core/console_view.h"
#include "settings/ini_file.h"
#include "tests/support/server_fixture.h"

namespace {

using core::ServiceKind;
using testing::ElementsAre;

class FakeService : public core::Service {
 public:
  bool Start() override { return starts; }
  bool Stop() override { return stops; }
  bool IsRunning() const override { return false; }
  bool LoadOptions() override { return true; }
  std::string Domain() const override { return domain; }
  std::string RootDir() const override { return "root"; }

  std::string domain = "home.example";
  bool starts = true;
  bool stops = true;
};

// Keeps what each frame shows, as a window would.
class RecordingView : public core::ManagerView {
 public:
  struct Frame {
    std::string result = "-";
    std::string address = "-";
    std::string hint = "-";
    std::string rootDir = "-";
    std::string panel = "-";
    bool enabled = true;
    bool stopButton = false;
    bool stopItem = false;
    bool on = false;
  };
  void SetResult(ServiceKind s, const std::string& text) override { frames[s].result = text; }
  void SetAddress(ServiceKind s, const std::string& text) override { frames[s].address = text; }
  void EnableAddress(ServiceKind s, bool enabled) override { frames[s].enabled = enabled; }
  void SetHint(ServiceKind s, const std::string& text) override { frames[s].hint = text; }
  void SetRootDir(ServiceKind s, const std::string& path) override { frames[s].rootDir = path; }
  void ShowButtons(ServiceKind s, bool running) override { frames[s].stopButton = running; }
  void SwitchMenuItems(ServiceKind s, bool running) override { frames[s].stopItem = running; }
  void SetStatusPanel(ServiceKind s, bool on, const std::string& text) override {
    frames[s].on = on;
    frames[s].panel = text;
    order.push_back(text);
  }

  std::map<ServiceKind, Frame> frames;
  std::vector<std::string> order;
};

class ServiceControl : public test::ProgramFixture {
 protected:
  std::string Flag(std::string_view key) {
    return ModINIOP::ReadIni(Home().Text("startflg.dat"), "ServerStatus", key);
  }
  RecordingView::Frame& Web() { return view_.frames[ServiceKind::kWeb]; }
  RecordingView::Frame& Ftp() { return view_.frames[ServiceKind::kFtp]; }
  RecordingView::Frame& Mail() { return view_.frames[ServiceKind::kMail]; }

  FakeService web_;
  FakeService ftp_;
  FakeService mail_;
  RecordingView view_;
  core::ServiceControl control_{Program(), {web_, ftp_, mail_}, view_};
};

TEST_F(ServiceControl, StartsWebThenMailThenFtpWithTheirAddresses) {
  control_.StartAll();
  EXPECT_THAT(view_.order, ElementsAre("Web服务：ON", "Mail服务：ON", "Ftp服务：ON"));
  EXPECT_EQ(Web().result, "Web发布已经启动。 您的主页在：");
  EXPECT_EQ(Web().address, "Http://home.example");
  EXPECT_EQ(Ftp().address, "ftp://home.example");
  EXPECT_EQ(Mail().address, "SMTP:home.example  POP3:home.example");
  EXPECT_EQ(Web().rootDir, "root");
  EXPECT_EQ(Mail().rootDir, "root");
  EXPECT_EQ(Ftp().rootDir, "-");
  EXPECT_EQ(Ftp().hint, "点击“停止”您可以停止Ftp服务。");
  EXPECT_TRUE(Web().stopButton && Ftp().stopButton && Mail().stopButton);
  EXPECT_TRUE(Web().stopItem && Web().on);
  EXPECT_EQ(Flag("WebServer") + Flag("FtpServer") + Flag("MailServer"), "TrueTrueTrue");
}

TEST_F(ServiceControl, AFailedStartShowsItsTextAndNoAddress) {
  web_.starts = ftp_.starts = false;
  control_.cmdStartWebService();
  control_.cmdStartFtpService();
  EXPECT_EQ(Web().result, "Web发布失败。请检查您的Web与网络设置。");
  EXPECT_EQ(Web().address, "");
  EXPECT_EQ(Web().hint, "点击“启动”您可以重新启动Web服务。");
  EXPECT_EQ(Web().panel, "Web服务：OFF");
  EXPECT_FALSE(Web().stopButton || Web().on);
  EXPECT_EQ(Flag("WebServer") + Flag("FtpServer"), "FalseFalse");
}

TEST_F(ServiceControl, AFailedMailStartIsRecordedUnderTheWebServer) {
  control_.cmdStartWebService();
  mail_.starts = false;
  control_.cmdStartMailService();
  EXPECT_EQ(Mail().result, "E-Mail服务启动失败。请检查您的E-Mail与网络设置。");
  EXPECT_EQ(Flag("WebServer"), "False");
  EXPECT_EQ(Flag("MailServer"), "");
}

TEST_F(ServiceControl, StoppingShowsTheAddressesItsOwnWayAndNeverWritesTheFlags) {
  control_.StartAll();
  control_.cmdStopWebService();
  control_.cmdStopFtpService();
  control_.cmdStopMailService();
  EXPECT_EQ(Web().result, "Web服务已经停止。您的主页是： ");
  EXPECT_EQ(Web().address, "Http://home.example");
  EXPECT_FALSE(Web().enabled);
  EXPECT_EQ(Ftp().address, "home.example");
  EXPECT_TRUE(Ftp().enabled);
  EXPECT_EQ(Mail().address, "");
  EXPECT_EQ(Mail().result, "E-Mail服务已经停止。您的E-Mail地址： ");
  EXPECT_FALSE(Web().stopButton || Ftp().stopItem || Mail().on);
  EXPECT_EQ(Flag("WebServer") + Flag("FtpServer") + Flag("MailServer"), "TrueTrueTrue");
  control_.cmdStartWebService();
  EXPECT_TRUE(Web().enabled);
}

TEST_F(ServiceControl, AFailedMailStopSpeaksInTheWebFrame) {
  control_.StartAll();
  mail_.stops = false;
  control_.cmdStopMailService();
  EXPECT_EQ(Web().result, "E-Mail服务停止失败。请检查网络设置然后重新启动计算机。");
  EXPECT_EQ(Web().address, "");
  EXPECT_EQ(Web().hint, "点击“停止”您可以停止E-Mail服务。");
  EXPECT_EQ(Mail().result, "E-Mail服务已经启动。");
  EXPECT_TRUE(Mail().stopItem);
  EXPECT_EQ(Mail().panel, "Mail服务：OFF");
}

TEST_F(ServiceControl, AFailedFtpStopHintsInItsOwnSpelling) {
  control_.StartAll();
  ftp_.stops = false;
  control_.cmdStopFtpService();
  EXPECT_EQ(Ftp().result, "FTP服务停止失败。请检查网络设置然后重新启动计算机。");
  EXPECT_EQ(Ftp().hint, "点击“停止”您可以停止FTP服务。");
  EXPECT_TRUE(Ftp().stopButton && Ftp().stopItem);
}

TEST_F(ServiceControl, TheConsoleSaysWhatRunsAndWhere) {
  std::FILE* stream = std::tmpfile();
  core::ConsoleView console(stream);
  core::ServiceControl control(Program(), {web_, ftp_, mail_}, console);
  control.cmdStartWebService();
  std::rewind(stream);
  std::array<char, 512> text = {};
  const std::size_t size = std::fread(text.data(), 1, text.size(), stream);
  std::fclose(stream);
  EXPECT_EQ(std::string(text.data(), size),
            "Web发布已经启动。 您的主页在：Http://home.example\nWeb服务：ON\n");
}

}  // namespace
