// Settings whose writer is killed at any moment.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "settings/change.h"
#include "settings/ini_file.h"
#include "tests/support/server_fixture.h"

namespace {

constexpr int kKeys = 12;

class KilledWriter : public test::ProgramFixture {
 protected:
  // Confirms a dialog of twelve keys again and again, each time with another value, until it is
  // killed that many microseconds later.
  void ConfirmUntilKilled(unsigned microseconds) {
    const pid_t writer = fork();
    if (writer == 0) {
      for (int value = 1;; ++value) Confirm(std::to_string(value));
    }
    usleep(microseconds);
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
  }

  void Confirm(const std::string& value) {
    settings::Change change(Program());
    Fill(change, "Dialog", value);
    change.Save();
  }

  static void Fill(settings::Change& change, std::string_view section, const std::string& value) {
    const settings::SectionChange settings = change.In(section);
    for (int key = 0; key < kKeys; ++key) settings.Write(std::to_string(key), value);
  }

  std::set<std::string> ValuesOf(std::string_view section) const {
    std::set<std::string> values;
    for (int key = 0; key < kKeys; ++key) {
      values.insert(ModINIOP::ReadIni(Home().Text("Server.ini"), section, std::to_string(key)));
    }
    return values;
  }
};

TEST_F(KilledWriter, LeavesTheWholeOldOrTheWholeNewFileTheFirstOneIncluded) {
  const settings::SettingsHolders::Holder holder(
      Program().Holders(), [](settings::Change& change) { Fill(change, "Held", "held"); });
  constexpr unsigned kRounds = 150;
  int written = 0;
  for (unsigned round = 0; round < kRounds; ++round) {
    if (round % 2 == 0) std::filesystem::remove(Home().Path("Server.ini"));
    ConfirmUntilKilled(round * 40);
    if (!Home().Has("Server.ini")) continue;
    ++written;
    ASSERT_EQ(ValuesOf("Dialog").size(), 1U) << Home().Read("Server.ini");
    ASSERT_EQ(ValuesOf("Held"), std::set<std::string>{"held"}) << Home().Read("Server.ini");
  }
  EXPECT_GT(written, 0);
}

}  // namespace
