// The FTP server against plain loops in the same run, and against itself with more clients.
//
// ftp_bench <Tarnwerk> [measurement...]
//
// With a display the program opens its window, without one it has none. Names of measurements
// (retr, stor, eight, answers, memory) leave out the others.
//
// Every figure is a ratio within this run, or a size. "want" is the goal.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench/failure.h"
#include "bench/ftp_client.h"
#include "bench/ftp_load.h"
#include "bench/plain_transfers.h"
#include "bench/running_program.h"
#include "bench/sockets.h"
#include "bench/stopwatch.h"
#include "bench/tarnwerk.h"

namespace {

using bench::Descriptor;
using bench::Folder;
using Ftp = bench::FtpClient;
using bench::SecondsOf;
using bench::SendMany;
using bench::Tarnwerk;

constexpr std::size_t kBigBytes = 256U << 20;
constexpr int kManyFiles = 100000;
constexpr int kRounds = 7;

// The fastest of several alternating rounds: other load on the machine only ever adds time.
struct Fastest {
  double plain = 1e9;
  double ours = 1e9;

  void Add(double plainSeconds, double ourSeconds) {
    plain = std::min(plain, plainSeconds);
    ours = std::min(ours, ourSeconds);
  }
};

void CompareRetr(const Tarnwerk& tarnwerk, const Folder& folder) {
  Ftp ftp(tarnwerk.FtpPort());
  Fastest fastest;
  std::uint64_t fewest = kBigBytes;
  for (int round = 0; round < kRounds; ++round) {
    const double plain = bench::PlainSend(folder.Path("ftproot/big.bin"));
    const double ours = SecondsOf([&] { fewest = std::min(fewest, ftp.Fetch("RETR /big.bin")); });
    fastest.Add(plain, ours);
  }
  std::printf(
      "RETR: %.2f of the plain loop (%.0f MB/s, %llu bytes); want 0.90, with a window 0.33\n",
      fastest.plain / fastest.ours, static_cast<double>(kBigBytes) / fastest.ours / 1e6,
      static_cast<unsigned long long>(fewest));
}

void CompareStor(const Tarnwerk& tarnwerk, const Folder& folder) {
  Ftp ftp(tarnwerk.FtpPort());
  ftp.Ask("CWD /");
  Fastest fastest;
  for (int round = 0; round < kRounds; ++round) {
    std::filesystem::remove(folder.Path("plain.bin"));
    const double plain = bench::PlainReceive(folder.Path("plain.bin"), kBigBytes);
    std::filesystem::remove(folder.Path("ftproot/stored.bin"));
    const double ours = SecondsOf([&] {
      {
        const Descriptor data = ftp.OpenPassive();
        ftp.Ask("STOR stored.bin");
        SendMany(data.Number(), kBigBytes);
      }
      ftp.Reply();
    });
    fastest.Add(plain, ours);
  }
  std::printf("STOR: %.2f of the plain loop (%llu bytes); want 0.90\n",
              fastest.plain / fastest.ours,
              static_cast<unsigned long long>(
                  std::filesystem::file_size(folder.Path("ftproot/stored.bin"))));
}

std::vector<double> Fetch(const Tarnwerk& tarnwerk, std::size_t clients) {
  return bench::RetrieveTogether(tarnwerk.FtpPort(), clients, "big.bin", kBigBytes);
}

void MeasureEight(const Tarnwerk& tarnwerk) {
  constexpr std::size_t kClients = 8;
  double one = 1e9;
  double all = 1e9;
  double fairness = 1;
  for (int round = 0; round < 3; ++round) {
    one = std::min(one, Fetch(tarnwerk, 1).front());
    const std::vector<double> seconds = Fetch(tarnwerk, kClients);
    const auto [fastest, slowest] = std::minmax_element(seconds.begin(), seconds.end());
    all = std::min(all, *slowest);
    fairness = std::min(fairness, *fastest / *slowest);
  }
  std::printf(
      "eight at once: %.2f of one client's speed; want 1.00; slowest %.2f of the fastest;"
      " want 0.50\n",
      kClients * one / all, fairness);
}

void MeasureAnswers(const std::string& program) {
  const Folder folder(Folder::Place::kMemory);
  bench::FillFolder(folder, "hundred", 0, kManyFiles);
  const Tarnwerk tarnwerk(program, folder);
  const double slowest = bench::SlowestAnswer(tarnwerk.FtpPort(), [&] {
    for (int i = 0; i < 3; ++i) bench::ListSeconds(tarnwerk.FtpPort(), "hundred", kManyFiles);
  });
  std::printf("an answer during listings of 100,000 files: %.1f ms at worst; want 50\n",
              slowest * 1000);
}

void MeasureMemory(const Tarnwerk& tarnwerk) {
  const auto before = tarnwerk.Process().AnonymousMemory();
  std::vector<std::unique_ptr<Ftp>> clients;
  std::vector<Descriptor> data;
  for (int i = 0; i < 8; ++i) {
    clients.push_back(std::make_unique<Ftp>(tarnwerk.FtpPort()));
    data.push_back(clients.back()->OpenPassive());
    clients.back()->Ask("RETR /big.bin");
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  std::printf("eight standing transfers of 256 MiB: %lld KiB more memory\n",
              static_cast<long long>(tarnwerk.Process().AnonymousMemory()) -
                  static_cast<long long>(before));
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) {
    std::fputs("usage: ftp_bench <Tarnwerk> [retr|stor|eight|answers|memory]...\n", stderr);
    return 2;
  }
  const std::vector<std::string> wanted(arguments + 2, arguments + argumentCount);
  const auto isWanted = [&](const char* name) {
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end();
  };
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  return bench::RunOrReport([&] {
    const Folder folder;
    folder.Write("ftproot/big.bin", std::string(kBigBytes, 'x'));
    using Display = Tarnwerk::Display;
    const bool isSeen = std::getenv("DISPLAY") != nullptr;
    const Tarnwerk tarnwerk(arguments[1], folder,
                            {.display = isSeen ? Display::kOurs : Display::kNone});
    if (isWanted("retr")) CompareRetr(tarnwerk, folder);
    if (isWanted("stor")) CompareStor(tarnwerk, folder);
    if (isWanted("eight")) MeasureEight(tarnwerk);
    if (isWanted("answers")) MeasureAnswers(arguments[1]);
    if (isWanted("memory")) MeasureMemory(tarnwerk);
  });
}
