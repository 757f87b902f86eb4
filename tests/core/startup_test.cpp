#include "core/startup.h"

#include "tests/support/server_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

// Writes down what is done, in order.
class RecordedSteps : public core::StartupSteps {
 public:
  void AuthorizeInFirewall() override { done.push_back("firewall"); }
  void CloseRunningInstance() override { done.push_back("close running"); }
  bool BecomeRunningInstance() override {
    done.push_back("become instance");
    return first;
  }
  void RecordProgramPath() override { done.push_back("program path"); }
  void SwitchProxyOff() override { done.push_back("proxy"); }
  void StartServices() override { done.push_back("services"); }
  void GoToTray() override { done.push_back("tray"); }
  void ShowMainWindow() override { done.push_back("window"); }
  void OpenWebAddress() override { done.push_back("web address"); }

  bool first = true;
  std::vector<std::string> done;
};

class Startup : public test::ProgramFixture {
 protected:
  std::vector<std::string> Run(std::string_view commandLine) {
    RecordedSteps steps;
    lives_ = ModMain::Main(Program(), commandLine, steps);
    return steps.done;
  }
  void Settings(std::string_view autoStart, std::string_view tray) {
    Home().Write("Server.ini", "[System]\nAutoStartService=" + std::string(autoStart) +
                                   "\nStartInTaskBar=" + std::string(tray) + "\n");
  }
  bool lives_ = false;
};

TEST_F(Startup, RunsEveryStepInOrder) {
  EXPECT_THAT(Run("start show web"), ElementsAre("firewall", "become instance", "program path",
                                                 "proxy", "services", "tray", "web address"));
  EXPECT_TRUE(lives_);
}

TEST_F(Startup, StopClosesTheRunningInstancesAndDoesNothingElse) {
  EXPECT_THAT(Run("/stop SHOW WEB"), ElementsAre("firewall", "close running"));
  EXPECT_FALSE(lives_);
}

TEST_F(Startup, WordsCountOnlyInTheirPlaces) {
  EXPECT_THAT(Run("SHOW"), Not(Contains("tray")));
  EXPECT_THAT(Run("SHOW"), Not(Contains("services")));
  EXPECT_THAT(Run("x SHOW"), Contains("tray"));
  EXPECT_THAT(Run("x x WEB"), Contains("web address"));
  EXPECT_THAT(Run("WEB x x"), Not(Contains("web address")));
  EXPECT_THAT(Run("x STOP"), Not(Contains("close running")));
}

TEST_F(Startup, SettingsDecideOnlyWithoutAnyWord) {
  Settings("1", "True");
  EXPECT_THAT(Run(""), testing::AllOf(Contains("services"), Contains("tray")));
  EXPECT_THAT(Run(" / "), Contains("services"));
  EXPECT_THAT(Run("x"), testing::AllOf(Not(Contains("services")), Contains("window")));
  Settings("", "perhaps");
  EXPECT_THAT(Run(""), testing::AllOf(Not(Contains("services")), Contains("window")));
}

TEST_F(Startup, ASecondInstanceEndsAtOnce) {
  RecordedSteps steps;
  steps.first = false;
  EXPECT_FALSE(ModMain::Main(Program(), "START", steps));
  EXPECT_THAT(steps.done, ElementsAre("firewall", "become instance"));
}

}  // namespace
