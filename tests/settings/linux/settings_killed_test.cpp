// Settings whose writer is killed at any moment.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "settings/change.h"
#include "settings/ini_file.h"
#include "tests/support/server_fixture.h"

namespace {

class KilledWriter : public test::ProgramFixture {
 protected:
  // Confirms a dialog again and again, each time with another value for all of its keys.
  void ConfirmForever() const {
    for (int value = 1;; ++value) {
      settings::Change change(Program());
      for (const char* key : kKeys) change.In("Dialog").Write(key, std::to_string(value));
      change.Save();
    }
  }
  std::string Read(const char* section, const char* key) const {
    return ModINIOP::ReadIni(Home().Text("Server.ini"), section, key);
  }
  static constexpr const char* kKeys[] = {"a", "b", "c", "d", "e", "f", "g", "h"};
};

TEST_F(KilledWriter, LeavesTheWholeOldOrTheWholeNewFileTheFirstOneIncluded) {
  const settings::SettingsHolders::Holder holder(
      Program().Holders(), [](settings::Change& change) { change.In("Held").Write("x", "held"); });
  int written = 0;
  // A little longer each round, so that a slow writer gets there too.
  for (unsigned round = 0; written < 75; ++round) {
    if (round % 2 == 0) std::filesystem::remove(Home().Path("Server.ini"));
    const pid_t writer = fork();
    if (writer == 0) ConfirmForever();
    usleep(round * 40);
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    if (!Home().Has("Server.ini")) continue;
    ++written;
    for (const char* key : kKeys) ASSERT_EQ(Read("Dialog", key), Read("Dialog", "a"));
    ASSERT_EQ(Read("Held", "x"), "held");
  }
}

}  // namespace
