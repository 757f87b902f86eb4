// The Web server against its own pacing, and at rest.
//
// web_bench <Tarnwerk>
//
// Every figure is a ratio within this run, or a size. "want" is the goal.

#include <algorithm>
#include <cstdio>
#include <string>
#include <thread>

#include "bench/failure.h"
#include "bench/load_client.h"
#include "bench/running_program.h"
#include "bench/tarnwerk.h"

namespace {

using bench::Folder;
using bench::RunningProgram;
using bench::Tarnwerk;

constexpr const char* kLargeFile = "large.bin";
constexpr std::size_t kLargeBytes = 1U << 20;

const std::string kRequest =
    std::string("GET /") + kLargeFile + " HTTP/1.0\r\nHost: localhost\r\nConnection: close\r\n\r\n";

void MeasurePacing(const Tarnwerk& tarnwerk, int clients) {
  constexpr double kPaced = 0.050 * static_cast<double>(kLargeBytes / 10240);
  const auto fetched = bench::FetchOnce({tarnwerk.WebPort(), kRequest, clients, {}});
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
              tarnwerk.StartSeconds() * 1000);
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
  std::thread load([&] { bench::FetchOnce({tarnwerk.WebPort(), kRequest, 19, {}}); });
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
  return bench::RunOrReport([&] {
    const Folder folder;
    folder.Write(std::string("wwwroot/") + kLargeFile, std::string(kLargeBytes, 'y'));
    const Tarnwerk tarnwerk(arguments[1], folder);
    MeasurePacing(tarnwerk, 1);
    MeasurePacing(tarnwerk, 19);
    MeasureMemory(tarnwerk);
    MeasureRest(tarnwerk);
  });
}
