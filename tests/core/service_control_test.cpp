#include "core/service_control.h"

#include "core/console_view.h"
#include "core/service_texts.h"
#include "settings/ini_file.h"
#include "tests/support/server_fixture.h"

namespace {

using core::ServiceKind;
using testing::ElementsAre;

class FakeService : public core::Service {
 public:
  bool Start() override { return works; }
  bool Stop() override { return works; }
  bool IsRunning() const override { return false; }
  bool LoadOptions() override { return true; }
  std::string Domain() const override { return "home.test"; }
  std::string RootDir() const override { return "root"; }
  std::optional<core::StartFailure> LastFailure() const override { return failure; }

  bool works = true;
  std::optional<core::StartFailure> failure;
};

// Writes down what a view is told: the service whose frame shows it, its labels, the button that
// fits, whether the address is enabled or disabled, and the root directory.
class RecordingView : public core::ManagerView {
 public:
  void ShowOutcome(const core::Outcome& outcome) override {
    const core::OutcomeTexts& texts = core::TextsOf(outcome);
    std::string line = core::TextsOf(outcome.frame).name;
    line += std::string("/") + texts.result + outcome.address + "/" + texts.hint + "/" +
            core::StatusText(outcome) + (outcome.CanBeStopped() ? "/stop" : "/start");
    if (outcome.enableAddress) line += *outcome.enableAddress ? "/enable" : "/disable";
    if (outcome.rootDir) line += "/" + *outcome.rootDir;
    told.push_back(line);
    items.push_back(core::TextsOf(outcome.service).name);
  }
  std::vector<std::string> told;
  std::vector<std::string> items;  // whose menu items are switched
};

class ServiceControl : public test::ProgramFixture {
 protected:
  std::string Flags() {
    std::string flags;
    for (const char* key : {"WebServer", "FtpServer", "MailServer"}) {
      flags += ModINIOP::ReadIni(Home().Text("startflg.dat"), "ServerStatus", key) + " ";
    }
    return flags;
  }
  void SetWorking(bool works) {
    for (FakeService* service : {&web_, &ftp_, &mail_}) service->works = works;
  }
  void StopAll() {
    control_.cmdStopWebService();
    control_.cmdStopFtpService();
    control_.cmdStopMailService();
  }

  FakeService web_;
  FakeService ftp_;
  FakeService mail_;
  RecordingView view_;
  core::ServiceControl control_{Program(), {web_, ftp_, mail_}, view_};
};

TEST_F(ServiceControl, StartsWebThenMailThenFtp) {
  control_.StartAll();
  EXPECT_THAT(view_.told,
              ElementsAre("Web/Web发布已经启动。 您的主页在：Http://home.test/"
                          "点击“停止”您可以停止Web服务。/Web服务：ON/stop/enable/root",
                          "Mail/E-Mail服务已经启动。SMTP:home.test  POP3:home.test/"
                          "点击“停止”您可以停止E-Mail服务。/Mail服务：ON/stop/enable/root",
                          "Ftp/Ftp服务已经启动。 您的Ftp地址是：ftp://home.test/"
                          "点击“停止”您可以停止Ftp服务。/Ftp服务：ON/stop/enable"));
  EXPECT_EQ(Flags(), "True True True ");
}

TEST_F(ServiceControl, AFailedStartHasNoAddressAndMailsIsRecordedUnderTheWebServer) {
  SetWorking(false);
  control_.cmdStartMailService();
  EXPECT_EQ(Flags(), "False   ");
  control_.cmdStartWebService();
  control_.cmdStartFtpService();
  EXPECT_THAT(view_.told, ElementsAre("Mail/E-Mail服务启动失败。请检查您的E-Mail与网络设置。/"
                                      "点击“启动”您可以重新启动E-Mail服务。/Mail服务：OFF/start",
                                      "Web/Web发布失败。请检查您的Web与网络设置。/"
                                      "点击“启动”您可以重新启动Web服务。/Web服务：OFF/start",
                                      "Ftp/Ftp服务启动失败。请检查您的FTP与网络设置。/"
                                      "点击“启动”您可以重新启动FTP服务。/Ftp服务：OFF/start"));
  EXPECT_EQ(Flags(), "False False  ");
}

TEST_F(ServiceControl, StoppingShowsEachAddressItsOwnWayAndNeverWritesTheFlags) {
  control_.StartAll();
  view_.told.clear();
  StopAll();
  EXPECT_THAT(view_.told, ElementsAre("Web/Web服务已经停止。您的主页是： Http://home.test/"
                                      "点击“启动”您可以开始Web服务。/Web服务：OFF/start/disable",
                                      "Ftp/Ftp服务已经停止。您的FTP地址是： home.test/"
                                      "点击“启动”您可以开始FTP服务。/Ftp服务：OFF/start",
                                      "Mail/E-Mail服务已经停止。您的E-Mail地址： /"
                                      "点击“启动”您可以开始E-Mail服务。/Mail服务：OFF/start"));
  EXPECT_EQ(Flags(), "True True True ");
}

TEST_F(ServiceControl, AFailedStopKeepsTheButtonAndMailsSpeaksInTheWebFrame) {
  SetWorking(false);
  StopAll();
  EXPECT_THAT(view_.told, ElementsAre("Web/Web服务停止失败。请检查网络设置然后重新启动计算机。/"
                                      "点击“停止”您可以停止Web服务。/Web服务：OFF/stop",
                                      "Ftp/FTP服务停止失败。请检查网络设置然后重新启动计算机。/"
                                      "点击“停止”您可以停止FTP服务。/Ftp服务：OFF/stop",
                                      "Web/E-Mail服务停止失败。请检查网络设置然后重新启动计算机。/"
                                      "点击“停止”您可以停止E-Mail服务。/Mail服务：OFF/stop"));
  EXPECT_THAT(view_.items, ElementsAre("Web", "Ftp", "Mail"));
}

TEST_F(ServiceControl, TheConsoleSaysWhatRunsAndWhereAndThatTheSettingsCannotBeRead) {
  std::FILE* stream = std::tmpfile();
  core::ConsoleView console(stream);
  core::ServiceControl control(Program(), {web_, ftp_, mail_}, console);
  control.cmdStartWebService();
  ftp_.works = false;
  ftp_.failure = core::StartFailure{std::make_error_code(std::errc::io_error), 0, true};
  control.cmdStartFtpService();
  std::rewind(stream);
  std::array<char, 1024> text = {};
  const std::size_t size = std::fread(text.data(), 1, text.size(), stream);
  std::fclose(stream);
  EXPECT_THAT(std::string(text.data(), size),
              testing::StartsWith("Web发布已经启动。 您的主页在：Http://home.test\nWeb服务：ON\n"
                                  "Ftp服务启动失败。请检查您的FTP与网络设置。\nFtp服务：OFF\n"
                                  "设置文件 Server.ini 无法读取："));
}

}  // namespace
