#include "core/service_control.h"

#include "core/service_texts.h"
#include "tests/support/server_fixture.h"

namespace {

class FakeService : public core::Service {
 public:
  bool Start() override { return works; }
  bool Stop() override { return works; }
  bool IsRunning() const override { return false; }
  bool LoadOptions() override { return true; }
  std::string Domain() const override { return "home.test"; }
  std::string RootDir() const override { return "root"; }
  std::optional<core::StartFailure> LastFailure() const override { return std::nullopt; }

  bool works = true;
};

// Writes down whose outcome is shown in whose frame, with which result label and address, which
// button, and what becomes of the address and the root directory.
class RecordingView : public core::ManagerView {
 public:
  void ShowOutcome(const core::Outcome& outcome) override {
    told += std::string(core::TextsOf(outcome.service).name) + " in " +
            core::TextsOf(outcome.frame).name + ": " + core::TextsOf(outcome).result +
            outcome.address + (outcome.CanBeStopped() ? " stop" : " start");
    if (outcome.enableAddress) told += *outcome.enableAddress ? " enabled" : " disabled";
    told += " " + outcome.rootDir.value_or("") + "\n";
  }
  std::string told;
};

class ServiceControl : public test::ProgramFixture {
 protected:
  void StartAndStopAll() {
    control.StartAll();
    control.cmdStopWebService();
    control.cmdStopFtpService();
    control.cmdStopMailService();
  }

  FakeService web, ftp, mail;
  RecordingView view;
  core::ServiceControl control{Program(), {web, ftp, mail}, view};
};

TEST_F(ServiceControl, ShowsWhereAServiceIsReachedAndRecordsStartsAlone) {
  StartAndStopAll();
  EXPECT_EQ(view.told,
            "Web in Web: Web发布已经启动。 您的主页在：Http://home.test stop enabled root\n"
            "Mail in Mail: E-Mail服务已经启动。SMTP:home.test  POP3:home.test stop enabled root\n"
            "Ftp in Ftp: Ftp服务已经启动。 您的Ftp地址是：ftp://home.test stop enabled \n"
            "Web in Web: Web服务已经停止。您的主页是： Http://home.test start disabled \n"
            "Ftp in Ftp: Ftp服务已经停止。您的FTP地址是： home.test start \n"
            "Mail in Mail: E-Mail服务已经停止。您的E-Mail地址：  start \n");
  EXPECT_EQ(Home().Read("startflg.dat"),
            "[ServerStatus]\r\nWebServer=True\r\nMailServer=True\r\nFtpServer=True\r\n");
}

TEST_F(ServiceControl, BlamesTheWebServerForTheMailServersFailures) {
  for (FakeService* service : {&web, &ftp, &mail}) service->works = false;
  StartAndStopAll();
  EXPECT_EQ(view.told,
            "Web in Web: Web发布失败。请检查您的Web与网络设置。 start \n"
            "Mail in Mail: E-Mail服务启动失败。请检查您的E-Mail与网络设置。 start \n"
            "Ftp in Ftp: Ftp服务启动失败。请检查您的FTP与网络设置。 start \n"
            "Web in Web: Web服务停止失败。请检查网络设置然后重新启动计算机。 stop \n"
            "Ftp in Ftp: FTP服务停止失败。请检查网络设置然后重新启动计算机。 stop \n"
            "Mail in Web: E-Mail服务停止失败。请检查网络设置然后重新启动计算机。 stop \n");
  EXPECT_EQ(Home().Read("startflg.dat"),
            "[ServerStatus]\r\nWebServer=False\r\nFtpServer=False\r\n");
}

}  // namespace
