// The Web server against nginx, against its own pacing, and at rest.
//
// web_bench <Tarnwerk>
//
// Every figure is a ratio within this run, or a size. "want" is the goal.

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "bench/load_client.h"
#include "bench/running_program.h"
#include "bench/tarnwerk.h"

namespace {

using bench::Folder;
using bench::Load;
using bench::RunningProgram;
using bench::Tarnwerk;

constexpr const char* kSmallFile = "small.txt";
constexpr const char* kLargeFile = "large.bin";
constexpr std::size_t kLargeBytes = 1U << 20;

void FillSite(const Folder& folder) {
  folder.Write(std::string("wwwroot/") + kSmallFile, std::string(2000, 'x'));
  folder.Write(std::string("wwwroot/") + kLargeFile, std::string(kLargeBytes, 'y'));
}

std::string Request(const std::string& file, int minor) {
  return "GET /" + file + " HTTP/1." + std::to_string(minor) +
         "\r\nHost: localhost\r\nConnection: close\r\n\r\n";
}

class Nginx {
 public:
  explicit Nginx(const Folder& folder)
      : port_(bench::FreePort()),
        settings_(WriteSettings(folder)),
        process_({"nginx", "-p", folder.Path(), "-c", folder.Path("nginx.conf")}, {}) {
    bench::WaitForPort(port_);
  }
  std::uint16_t Port() const { return port_; }

 private:
  bool WriteSettings(const Folder& folder) const {
    folder.Write("nginx.conf",
                 "daemon off; worker_processes 1; pid nginx.pid; error_log /dev/null;\n"
                 "user root;\n"
                 "events { worker_connections 1024; }\n"
                 "http { access_log off; sendfile on; tcp_nopush on; keepalive_timeout 0;\n"
                 "  server { listen 127.0.0.1:" +
                     std::to_string(port_) +
                     " backlog=4096;"
                     " root " +
                     folder.Path("wwwroot") + "; } }\n");
    return true;
  }

  std::uint16_t port_;
  bool settings_;
  RunningProgram process_;
};

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// Alternating, so that both see the same noise.
void CompareSmallFiles(const Tarnwerk& tarnwerk, const Nginx& nginx, int clients) {
  constexpr int kRounds = 7;
  std::vector<double> ratios;
  std::vector<double> ours;
  std::uint64_t failures = 0;
  for (int round = 0; round < kRounds; ++round) {
    const Load load = {tarnwerk.WebPort(), Request(kSmallFile, 0), clients,
                       std::chrono::milliseconds(700)};
    Load peer = load;
    peer.port = nginx.Port();
    const bench::LoadResult mine = bench::Run(load);
    const bench::LoadResult theirs = bench::Run(peer);
    ratios.push_back(mine.fetchesPerSecond / theirs.fetchesPerSecond);
    ours.push_back(mine.fetchesPerSecond);
    failures += mine.failures;
  }
  std::printf("small file, %2d clients: %.2f of nginx (%.0f a second, %llu failures); want 1.00\n",
              clients, Median(ratios), Median(ours), static_cast<unsigned long long>(failures));
}

void MeasurePacing(const Tarnwerk& tarnwerk, int clients) {
  constexpr double kPaced = 0.050 * static_cast<double>(kLargeBytes / 10240);
  const auto fetched = bench::FetchOnce({tarnwerk.WebPort(), Request(kLargeFile, 0), clients, {}});
  double slowest = 0;
  std::uint64_t fewest = kLargeBytes;
  for (const bench::Fetched& one : fetched) {
    slowest = std::max(slowest, one.seconds);
    fewest = std::min(fewest, one.bytes);
  }
  std::printf("1 MiB, %2d at once: %.3f of its pacing (slowest), %llu bytes (fewest); want 1.03\n",
              clients, slowest / kPaced, static_cast<unsigned long long>(fewest));
}

void MeasureRest(const Tarnwerk& tarnwerk) {
  std::printf("ready for the first client after %.0f ms; want 50\n",
              tarnwerk.ReadySeconds() * 1000);
  const RunningProgram& process = tarnwerk.Process();
  std::this_thread::sleep_for(std::chrono::seconds(6));
  const std::uint64_t ticks = process.ProcessorTicks();
  const std::uint64_t switches = process.ContextSwitches();
  std::this_thread::sleep_for(std::chrono::seconds(3));
  std::printf("idle for 3 s: %llu clock ticks, %llu wake-ups; want 0, 0\n",
              static_cast<unsigned long long>(process.ProcessorTicks() - ticks),
              static_cast<unsigned long long>(process.ContextSwitches() - switches));
}

void MeasureMemory(const Tarnwerk& tarnwerk) {
  const std::size_t before = tarnwerk.Process().Descriptors();
  std::thread load([&] { bench::FetchOnce({tarnwerk.WebPort(), Request(kLargeFile, 0), 19, {}}); });
  std::this_thread::sleep_for(std::chrono::seconds(2));
  std::printf("anonymous memory with all slots busy: %.2f MiB; want less than 6\n",
              static_cast<double>(tarnwerk.Process().AnonymousMemory()) / 1024);
  load.join();
  std::this_thread::sleep_for(std::chrono::seconds(1));
  std::printf("descriptors: %zu before, %zu after\n", before, tarnwerk.Process().Descriptors());
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::fputs("usage: web_bench <Tarnwerk>\n", stderr);
    return 2;
  }
  const Folder folder;
  FillSite(folder);
  const Tarnwerk tarnwerk(arguments[1], folder);
  const Nginx nginx(folder);
  CompareSmallFiles(tarnwerk, nginx, 1);
  CompareSmallFiles(tarnwerk, nginx, 16);
  MeasurePacing(tarnwerk, 1);
  MeasurePacing(tarnwerk, 19);
  MeasureMemory(tarnwerk);
  MeasureRest(tarnwerk);
  return 0;
}
