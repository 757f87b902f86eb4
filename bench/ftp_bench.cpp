// The FTP server against plain loops in the same run, against vsftpd where it is installed, and
// against itself at other sizes.
//
// ftp_bench <Tarnwerk> [measurement...]
//
// With a display the program opens its window, without one it has none. Names of measurements
// (retr, stor, eight, small, list, answers, memory) leave out the others.
//
// Every figure is a ratio within this run, or a size. "want" is the goal.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/ftp_client.h"
#include "bench/ftp_peers.h"
#include "bench/running_program.h"
#include "bench/sockets.h"
#include "bench/stopwatch.h"
#include "bench/tarnwerk.h"

namespace {

using bench::Clock;
using bench::Descriptor;
using bench::Folder;
using Ftp = bench::FtpClient;
using bench::ReceiveAll;
using bench::SecondsOf;
using bench::SecondsSince;
using bench::SendMany;
using bench::Tarnwerk;
using bench::Vsftpd;

constexpr std::size_t kBigBytes = 256U << 20;
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

// The seconds until all of `count` concurrent clients have the whole file.
std::vector<double> FetchTogether(std::uint16_t port, std::size_t count) {
  std::vector<std::unique_ptr<Ftp>> clients;
  std::vector<Descriptor> data;
  for (std::size_t i = 0; i < count; ++i) {
    clients.push_back(std::make_unique<Ftp>(port));
    data.push_back(clients.back()->OpenPassive());
    clients.back()->Ask("NOOP");  // the connection has been accepted before the next PASV
  }
  std::vector<double> seconds(count);
  const auto start = Clock::now();
  std::vector<std::thread> receivers;
  for (std::size_t i = 0; i < count; ++i) {
    clients[i]->Tell("RETR /big.bin");
    receivers.emplace_back([&, i] {
      ReceiveAll(data[i].Number());
      seconds[i] = SecondsSince(start);
    });
  }
  for (std::thread& receiver : receivers) receiver.join();
  return seconds;
}

void MeasureEight(const Tarnwerk& tarnwerk) {
  constexpr std::size_t kClients = 8;
  double one = 1e9;
  double all = 1e9;
  double fairness = 1;
  for (int round = 0; round < 3; ++round) {
    one = std::min(one, FetchTogether(tarnwerk.FtpPort(), 1).front());
    const std::vector<double> seconds = FetchTogether(tarnwerk.FtpPort(), kClients);
    const auto [fastest, slowest] = std::minmax_element(seconds.begin(), seconds.end());
    all = std::min(all, *slowest);
    fairness = std::min(fairness, *fastest / *slowest);
  }
  std::printf(
      "eight at once: %.2f of one client's speed; want 1.00; slowest %.2f of the fastest;"
      " want 0.50\n",
      kClients * one / all, fairness);
}

double SmallRate(std::uint16_t port) {
  Ftp ftp(port);
  ftp.Ask("USER anonymous");
  ftp.Ask("PASS x");
  ftp.Ask("TYPE I");
  const auto start = Clock::now();
  int count = 0;
  for (; SecondsSince(start) < 2; ++count) ftp.Fetch("RETR /small.bin");
  return count / SecondsSince(start);
}

void MeasureSmall(const Tarnwerk& tarnwerk, const Vsftpd& vsftpd) {
  std::printf("PASV and RETR of 4 KiB: %.0f a second; want 3000\n", SmallRate(tarnwerk.FtpPort()));
  if (vsftpd.IsRunning()) std::printf("  vsftpd: %.0f\n", SmallRate(vsftpd.Port()));
}

// The shortest time of a listing of `folder`.
double ListSeconds(std::uint16_t port, const std::string& folder, int rounds) {
  Ftp ftp(port);
  ftp.Ask("USER anonymous");
  ftp.Ask("PASS x");
  ftp.Ask("CWD /" + folder);
  double seconds = 1e9;
  for (int round = 0; round < rounds; ++round) {
    seconds = std::min(seconds, SecondsOf([&] { ftp.Fetch("LIST"); }));
  }
  return seconds;
}

void CompareListings(const Tarnwerk& tarnwerk, const Vsftpd& vsftpd) {
  const double small = ListSeconds(tarnwerk.FtpPort(), "thousand", 15) / 1000;
  const double large = ListSeconds(tarnwerk.FtpPort(), "hundred", 5) / 100000;
  std::printf("LIST of 100,000 files: %.2f of the time per entry of 1,000 (%.1f us); want 1.20\n",
              large / small, large * 1e6);
  if (!vsftpd.IsRunning()) return;
  const double theirs = ListSeconds(vsftpd.Port(), "hundred", 5) / 100000;
  std::printf("LIST of 100,000 files: %.2f of vsftpd's time; want 1.50\n", large / theirs);
  const double theirSmall = ListSeconds(vsftpd.Port(), "thousand", 15) / 1000;
  std::printf("  vsftpd: %.2f of its time per entry of 1,000\n", theirs / theirSmall);
}

// How long another session waits for a reply while large listings are built.
void MeasureAnswers(const Tarnwerk& tarnwerk) {
  std::atomic<bool> done = false;
  std::thread listing([&] {
    ListSeconds(tarnwerk.FtpPort(), "hundred", 3);
    done = true;
  });
  Ftp other(tarnwerk.FtpPort());
  double worst = 0;
  while (!done) {
    worst = std::max(worst, SecondsOf([&] { other.Ask("NOOP"); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  listing.join();
  std::printf("an answer during listings of 100,000 files: %.1f ms at worst; want 50\n",
              worst * 1000);
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

void Fill(const Folder& folder, bool withLargeFolders) {
  folder.Write("ftproot/big.bin", std::string(kBigBytes, 'x'));
  folder.Write("ftproot/small.bin", std::string(4096, 'x'));
  if (!withLargeFolders) return;
  for (int i = 0; i < 100000; ++i) {
    const std::string name = "file" + std::to_string(1000000 + i) + ".txt";
    folder.Write("ftproot/hundred/" + name, "x");
    if (i < 1000) folder.Write("ftproot/thousand/" + name, "x");
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) {
    std::fputs("usage: ftp_bench <Tarnwerk> [retr|stor|eight|small|list|answers|memory]...\n",
               stderr);
    return 2;
  }
  const std::vector<std::string> wanted(arguments + 2, arguments + argumentCount);
  const auto isWanted = [&](const char* name) {
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end();
  };
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const Folder folder;
  Fill(folder, isWanted("list") || isWanted("answers"));
  using Display = Tarnwerk::Display;
  const bool isSeen = std::getenv("DISPLAY") != nullptr;
  const Tarnwerk tarnwerk(arguments[1], folder, isSeen ? Display::kOurs : Display::kNone);
  const Vsftpd vsftpd(folder);
  if (isWanted("retr")) CompareRetr(tarnwerk, folder);
  if (isWanted("stor")) CompareStor(tarnwerk, folder);
  if (isWanted("eight")) MeasureEight(tarnwerk);
  if (isWanted("small")) MeasureSmall(tarnwerk, vsftpd);
  if (isWanted("list")) CompareListings(tarnwerk, vsftpd);
  if (isWanted("answers")) MeasureAnswers(tarnwerk);
  if (isWanted("memory")) MeasureMemory(tarnwerk);
  return 0;
}
