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
constexpr int kRounds = 9;
constexpr int kPacedRounds = 3;

void Fill(const Folder& folder) {
  folder.Write("ftproot/big.bin", std::string(kBigBytes, 'x'));
  folder.Write("wwwroot/paced.bin", std::string(kPacedBytes, 'y'));
}

// A program's window, used from the keyboard.
class Window {
 public:
  explicit Window(const Tarnwerk& program)
      : pid_(std::to_string(program.Process().Id())),
        find_("xdotool search --sync --onlyvisible --all --pid " + pid_ + " --name '^Tarnwerk$' ") {
  }

  void Press(const std::string& keys) const {
    Run(find_ + "windowfocus --sync key --clearmodifiers --delay 100 " + keys);
    Draw();
  }
  void Hide() const {
    Run(find_ + "windowunmap --sync");
    Draw();
  }
  void Show() const {
    Run("xdotool search --all --pid " + pid_ + " --name '^Tarnwerk$' windowmap --sync");
    Draw();
  }
  void AwaitDialog(const std::string& title) const {
    Run("xdotool search --sync --onlyvisible --all --pid " + pid_ + " --name '^" + title + "$'");
    Draw();
  }

 private:
  static void Draw() { std::this_thread::sleep_for(std::chrono::seconds(1)); }

  static void Run(const std::string& command) {
    bench::Expect(std::system(("timeout 20 " + command + " >/dev/null").c_str()) == 0,
                  "the window cannot be used from the keyboard");
  }

  std::string pid_;
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
    const Window window(programs.live);
    window.Press("ctrl+2 ctrl+Next");
    Compare("1 MiB paced, live view shown", programs, kPacedRounds, FetchPaced);
    window.Press("ctrl+3 ctrl+Next");
    Compare("RETR, live view shown", programs, kRounds, FetchFromFtp);
    window.Hide();
    Compare("RETR, window hidden", programs, kRounds, FetchFromFtp);
    window.Show();
    window.Press("alt+o");
    window.AwaitDialog("Ftp服务器选项");
    Compare("RETR, dialog open", programs, kRounds, FetchFromFtp);
  });
}
