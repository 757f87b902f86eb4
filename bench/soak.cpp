// A million connections, and what they leave behind.
//
// soak <Tarnwerk> [connections]
//
// Clients of every kind (bench/soak_clients.h) come to all four ports, one after another on several
// threads. Memory and descriptors are compared between the first tenth and the end. Then a paced
// download has to keep its time while such clients come to the other ports; on its own port the
// twentieth of them would take its slot. At last the program is asked to end.
//
// Fails if memory or descriptors grow; only reports a slow answer or a slow end.

#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "bench/load_client.h"
#include "bench/soak_clients.h"
#include "bench/sockets.h"
#include "bench/tarnwerk.h"

namespace {

using bench::ConnectTo;
using bench::Descriptor;
using bench::Kinds;
using bench::Receive;
using bench::Tarnwerk;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kPieceBytes = 10240;
constexpr std::size_t kPieces = 20;
constexpr int kThreads = 4;
constexpr double kLongestAnswer = 0.1;
constexpr double kLongestEnd = 2;

// Makes `count` connections, going through the kinds in turn.
void Come(const Kinds& kinds, std::uint64_t count) {
  std::atomic<std::uint64_t> next = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (std::uint64_t number = next++; number < count; number = next++) {
        kinds[number % kinds.size()]();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// The slowest reply to an FTP session until `done` is set. The session starts over whenever another
// client takes its slot.
double LongestAnswer(std::uint16_t port, const std::atomic<bool>& done) {
  double longest = 0;
  while (!done) {
    const Descriptor client = ConnectTo(port);
    if (Receive(client).empty()) continue;
    while (!done) {
      const auto asked = Clock::now();
      bench::SendAll(client.Number(), "NOOP\r\n");
      if (Receive(client).empty()) break;
      longest = std::max(longest, std::chrono::duration<double>(Clock::now() - asked).count());
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }
  return longest;
}

struct Figures {
  double mebibytes = 0;
  std::size_t descriptors = 0;
};

// Once all clients have left and draining connections are gone.
Figures AtRest(const Tarnwerk& tarnwerk) {
  std::this_thread::sleep_for(std::chrono::seconds(7));
  return {static_cast<double>(tarnwerk.Process().AnonymousMemory()) / 1024,
          tarnwerk.Process().Descriptors()};
}

// The slowest of several paced downloads, relative to its pacing, while `kinds` connect.
double SlowestPaced(const Tarnwerk& tarnwerk, const Kinds& kinds) {
  std::atomic<bool> done = false;
  std::thread coming([&] {
    while (!done) Come(kinds, 500);
  });
  double slowest = 0;
  for (int i = 0; i < 5; ++i) {
    const auto fetched =
        bench::FetchOnce({tarnwerk.WebPort(), "GET /paced.bin HTTP/1.0\r\n\r\n", 1, {}});
    slowest = std::max(slowest, fetched.front().seconds / (0.050 * kPieces));
  }
  done = true;
  coming.join();
  return slowest;
}

double Mebibytes(std::uintmax_t bytes) { return static_cast<double>(bytes) / (1 << 20); }

// Only the logs may grow.
void ReportDisk(const bench::Folder& folder) {
  std::uintmax_t logs = 0;
  std::uintmax_t others = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path())) {
    if (!entry.is_regular_file()) continue;
    const std::string extension = entry.path().extension();
    (extension == ".log" || extension == ".Log" ? logs : others) += entry.file_size();
  }
  std::printf("logs: %.1f MiB, other files: %.1f MiB\n", Mebibytes(logs), Mebibytes(others));
}

void FillFolder(const bench::Folder& folder) {
  folder.Write("wwwroot/small.txt", "hello");
  folder.Write("wwwroot/paced.bin", std::string(kPieces * kPieceBytes + 1, 'p'));
  folder.Write("wwwroot/cgi-bin/slow.cgi", "#!/bin/sh\nsleep 0.2\n");
  std::filesystem::permissions(folder.Path("wwwroot/cgi-bin/slow.cgi"),
                               std::filesystem::perms::owner_all);
  folder.Write("ftproot/paced.bin", std::string(1 << 20, 'd'));
  folder.Write("ftproot/small.bin", "hello");
  mkfifo(folder.Path("ftproot/pipe").c_str(), 0600);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) {
    std::fputs("usage: soak <Tarnwerk> [connections]\n", stderr);
    return 2;
  }
  const std::uint64_t wanted =
      argumentCount > 2 ? std::strtoull(arguments[2], nullptr, 10) : 1000000;
  const bench::Folder folder;
  FillFolder(folder);
  Tarnwerk tarnwerk(arguments[1], folder);
  const Kinds others = bench::OtherKinds(tarnwerk);
  Kinds kinds = bench::WebKinds(tarnwerk);
  kinds.insert(kinds.end(), others.begin(), others.end());

  Come(kinds, wanted / 10);
  const Figures early = AtRest(tarnwerk);
  std::atomic<bool> done = false;
  double longest = 0;
  std::thread asking([&] { longest = LongestAnswer(tarnwerk.FtpPort(), done); });
  const auto start = Clock::now();
  Come(kinds, wanted - wanted / 10);
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  done = true;
  asking.join();
  const Figures late = AtRest(tarnwerk);

  std::printf("connections: %llu (%.0f a second)\n", static_cast<unsigned long long>(wanted),
              static_cast<double>(wanted - wanted / 10) / seconds);
  std::printf("anonymous memory: %.2f MiB after a tenth, %.2f at the end\n", early.mebibytes,
              late.mebibytes);
  std::printf("descriptors: %zu after a tenth, %zu at the end\n", early.descriptors,
              late.descriptors);
  std::printf("longest answer of a session beside them: %.0f ms\n", longest * 1000);
  std::printf("a paced download beside such clients: %.3f of its pacing (slowest of five)\n",
              SlowestPaced(tarnwerk, others));
  const bool flat =
      late.mebibytes < early.mebibytes + 1 && late.descriptors <= early.descriptors + 2;
  ReportDisk(folder);
  const std::vector<Descriptor> guests = bench::ComeToStay(tarnwerk);
  const double end = tarnwerk.Stop();
  std::printf("from SIGTERM to its end: %.2f s\n", end);
  if (!flat) std::puts("NOT FLAT");
  if (longest >= kLongestAnswer) std::puts("AN ANSWER TOO LATE");
  if (end >= kLongestEnd) std::puts("AN END TOO LATE");
  // Times depend on the machine's other load, so they cannot fail the run.
  return flat ? 0 : 1;
}
