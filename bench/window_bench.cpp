// What a window costs a transfer: the same downloads from three programs, one showing the overview,
// one without a window, and one with the live view of the service shown, then with its window
// hidden, then with a dialog open.
//
// window_bench <Tarnwerk>
//
// Needs a display, and Debian's xdotool. Every figure is a ratio within this run. "want" is the
// goal.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "bench/failure.h"
#include "bench/ftp_client.h"
#include "bench/load_client.h"
#include "bench/running_program.h"
#include "bench/stopwatch.h"
#include "bench/tarnwerk.h"

namespace {

using bench::Folder;
using bench::Tarnwerk;
using Display = Tarnwerk::Display;

constexpr std::size_t kBigBytes = 256U << 20;
constexpr std::size_t kPacedBytes = 1U << 20;
constexpr const char* kOptionsTitle = "Ftp服务器选项";
constexpr int kRounds = 9;
constexpr int kPacedRounds = 3;

void Fill(const Folder& folder) {
  folder.Write("ftproot/big.bin", std::string(kBigBytes, 'x'));
  folder.Write("wwwroot/paced.bin", std::string(kPacedBytes, 'y'));
}

// The windows of a program, used from the keyboard.
class Windows {
 public:
  explicit Windows(const Tarnwerk& program)
      : find_("xdotool search --sync --onlyvisible --all --pid " +
              std::to_string(program.Process().Id()) + " --name ") {}

  void Press(const std::string& keys, const std::string& title = "Tarnwerk") const {
    // To whatever has the focus: a dialog that a key closes is gone when that key is released.
    Run(title, "windowfocus --sync && xdotool key --clearmodifiers --delay 100 " + keys);
  }
  void Await(const std::string& title) const { Run(title, ""); }
  void Hide() const { Run("Tarnwerk", "windowunmap --sync"); }

 private:
  void Run(const std::string& title, const std::string& command) const {
    const std::string line = "timeout 20 " + find_ + "'^" + title + "$' " + command;
    bench::Expect(std::system(("(" + line + ") >/dev/null").c_str()) == 0,
                  "the window cannot be used from the keyboard");
    std::this_thread::sleep_for(std::chrono::seconds(1));  // until it is drawn
  }

  std::string find_;
};

struct Programs {
  explicit Programs(const std::string& program)
      : bare(program, bareFolder),
        quiet(program, quietFolder, {.display = Display::kOurs}),
        live(program, liveFolder, {.display = Display::kOurs}) {
    for (const Folder* folder : {&bareFolder, &quietFolder, &liveFolder}) Fill(*folder);
  }

  Folder bareFolder;
  Folder quietFolder;
  Folder liveFolder;
  // The last window is on top and fully drawn.
  Tarnwerk bare;
  Tarnwerk quiet;
  Tarnwerk live;
};

// The fastest of several alternating rounds: other load on the machine only ever adds time.
template <class Download>
void Compare(const char* what, const Programs& programs, int rounds, const Download& download) {
  const std::array<const Tarnwerk*, 3> all = {&programs.live, &programs.quiet, &programs.bare};
  std::array<double, 3> fastest = {1e9, 1e9, 1e9};
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < all.size(); ++i) {
      fastest[i] = std::min(fastest[i], bench::SecondsOf([&] { download(*all[i]); }));
    }
  }
  std::printf(
      "%s: %.3f of the speed with the overview, want 0.97; %.3f without a window, want 0.9\n", what,
      fastest[1] / fastest[0], fastest[2] / fastest[0]);
}

void Expect(std::uint64_t bytes, std::size_t wanted) {
  bench::Expect(bytes == wanted, "a download of " + std::to_string(bytes) + " bytes");
}

void FetchFromFtp(const Tarnwerk& tarnwerk) {
  Expect(bench::FtpClient(tarnwerk.FtpPort()).Fetch("RETR /big.bin"), kBigBytes);
}

void FetchPaced(const Tarnwerk& tarnwerk) {
  const auto fetched =
      bench::FetchOnce({tarnwerk.WebPort(), "GET /paced.bin HTTP/1.0\r\n\r\n", 1, {}});
  Expect(fetched.front().bytes, kPacedBytes);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2 || std::getenv("DISPLAY") == nullptr) {
    std::fputs("usage: window_bench <Tarnwerk>, with a display\n", stderr);
    return 2;
  }
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  return bench::RunOrReport([&] {
    const Programs programs(arguments[1]);
    const Windows windows(programs.live);
    windows.Press("ctrl+2 ctrl+Next");
    Compare("1 MiB paced, live view shown", programs, kPacedRounds, FetchPaced);
    windows.Press("ctrl+3 ctrl+Next");
    Compare("RETR, live view shown", programs, kRounds, FetchFromFtp);
    windows.Press("alt+o");
    windows.Await(kOptionsTitle);
    Compare("RETR, dialog open", programs, kRounds, FetchFromFtp);
    windows.Press("Escape", kOptionsTitle);
    windows.Hide();
    Compare("RETR, window hidden", programs, kRounds, FetchFromFtp);
  });
}
