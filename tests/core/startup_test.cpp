#include "core/startup.h"

#include "tests/support/server_fixture.h"

namespace {

// Writes down in order what is done.
class RecordedSteps : public core::StartupSteps {
 public:
  void AuthorizeInFirewall() override { done += "firewall "; }
  void CloseRunningInstance() override { done += "close "; }
  bool BecomeRunningInstance() override { return first; }
  void RecordProgramPath() override { done += "path "; }
  void SwitchProxyOff() override { done += "proxy "; }
  void StartServices() override { done += "services "; }
  void GoToTray() override { done += "tray "; }
  void ShowMainWindow() override { done += "window "; }
  void OpenWebAddress() override { done += "web "; }

  bool first = true;
  std::string done;
};

class Startup : public test::ProgramFixture {};

TEST_F(Startup, WordsCountInTheirPlacesAndSettingsOnlyWithoutAnyWord) {
  const std::string services = "[System]\nAutoStartService=-1\nStartInTaskBar=0\n";
  const std::string tray = "[System]\nAutoStartService=yes\nStartInTaskBar= tRUE\n";
  const struct {
    std::string settings, commandLine, done;
  } cases[] = {
      {"", "", "window "},
      {"", "start show web", "services tray web "},
      {"", "/START/SHOW\t/ WEB", "services tray web "},
      {"", "SHOW", "window "},
      {"", "x-y=\"q\" SHOW", "tray "},
      {"", "x x WEB", "window web "},
      {"", "WEB x x", "window "},
      {"", "x STOP", "window "},
      {services, "", "services window "},
      {tray, " / \t", "tray "},
      {tray, "x", "window "},
  };
  for (const auto& each : cases) {
    Home().Write("Server.ini", each.settings);
    RecordedSteps steps;
    EXPECT_TRUE(ModMain::Main(Program(), each.commandLine, steps));
    EXPECT_EQ(steps.done, "firewall path proxy " + each.done) << each.commandLine;
  }
}

TEST_F(Startup, AStopAndASecondInstanceEndAtOnce) {
  RecordedSteps stop;
  EXPECT_FALSE(ModMain::Main(Program(), "/stop SHOW WEB", stop));
  EXPECT_EQ(stop.done, "firewall close ");
  RecordedSteps second;
  second.first = false;
  EXPECT_FALSE(ModMain::Main(Program(), "START", second));
  EXPECT_EQ(second.done, "firewall ");
}

}  // namespace
