#include "bench/comparison.h"

#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <thread>
#include <utility>

#include "bench/median.h"
#include "bench/process_tree.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

// In which the processes of a session that has ended must end, too, to be counted for it.
constexpr double kLongestFarewell = 0.3;

class Series {
 public:
  explicit Series(const Contestant& contestant)
      : contestant_(contestant), before_(contestant.server->Used()) {}

  void Add(const Measure& measure) {
    if (hasFailed_) return;
    const std::size_t processes = CountOfTree(getpid());
    try {
      const Sample sample = measure(contestant_);
      figures_.push_back(sample.figure);
      work_ += sample.work;
    } catch (const std::exception& failure) {
      hasFailed_ = true;
      std::fprintf(stderr, "%s: %s\n", contestant_.server->Name().c_str(), failure.what());
    }
    WaitForEnds(processes);
  }

  Entry Result() const {
    Entry entry = {contestant_.server->Name(), {}, {}};
    if (hasFailed_) return entry;
    entry.median = Median(figures_);
    const Usage now = contestant_.server->Used();
    if (work_ > 0 && now.countsEndedChildren) {
      entry.processorSeconds =
          (now.processorSeconds - before_.processorSeconds + orphanSeconds_) / work_;
    }
    return entry;
  }

 private:
  // Until there are only as many as before the measurement.
  void WaitForEnds(std::size_t processes) {
    const Clock::time_point start = Clock::now();
    do {
      orphanSeconds_ += SecondsOfOrphans();
      if (CountOfTree(getpid()) <= processes) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    } while (SecondsSince(start) < kLongestFarewell);
  }

  Contestant contestant_;
  Usage before_;
  std::vector<double> figures_;
  double work_ = 0;
  double orphanSeconds_ = 0;
  bool hasFailed_ = false;
};

void Report(const Row& row) {
  std::fprintf(stderr, "%s:", row.figure.name.c_str());
  for (const Entry& entry : row.entries) {
    std::fprintf(stderr, "  %s %.*f", entry.server.c_str(), row.figure.decimals,
                 entry.median.value_or(-1));
    if (entry.processorSeconds) std::fprintf(stderr, " (%.3f)", *entry.processorSeconds);
  }
  std::fputc('\n', stderr);
}

}  // namespace

void LineUp::Add(std::unique_ptr<Server> peer) {
  if (peer == nullptr) return;
  Add(*peer, peer->Port());
  peers_.push_back(std::move(peer));
}

Row Compare(const Figure& figure, const std::vector<Contestant>& contestants,
            const Measure& measure) {
  std::vector<Series> all(contestants.begin(), contestants.end());
  for (int round = 0; round < figure.rounds; ++round) {
    // Whoever is measured first is another one each time.
    for (std::size_t i = 0; i < all.size(); ++i) {
      all[(i + static_cast<std::size_t>(round)) % all.size()].Add(measure);
    }
  }
  Row row = {figure, {}};
  for (const Series& series : all) row.entries.push_back(series.Result());
  Report(row);
  return row;
}

}  // namespace bench
