#pragma once

// A figure of several servers, measured in turn: in each round every server once, so that all see
// the same noise. A server whose measurement throws has no figure.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/server.h"

namespace bench {

/// A server, and which of its ports is asked.
struct Contestant {
  Server* server = nullptr;
  std::uint16_t port = 0;
};

/// Servers to be compared; owns the peers among them.
class LineUp {
 public:
  void Add(Server& server, std::uint16_t port) { all_.push_back({&server, port}); }
  /// Null for one that is left out.
  void Add(std::unique_ptr<Server> peer);

  const std::vector<Contestant>& All() const { return all_; }

 private:
  std::vector<std::unique_ptr<Server>> peers_;
  std::vector<Contestant> all_;
};

/// What a measurement finds, and how much the server did for it, in the unit in which its processor
/// time is given; nothing if that is not.
struct Sample {
  double figure = 0;
  double work = 0;
};

struct Figure {
  std::string name;  // with its unit
  int decimals = 0;
  int rounds = 5;
  std::string goal = {};
};

struct Entry {
  std::string server;
  std::optional<double> median;
  std::optional<double> processorSeconds;  // per unit of work
};

struct Row {
  Figure figure;
  std::vector<Entry> entries;
};

using Measure = std::function<Sample(const Contestant&)>;

/// Prints to the error stream what it finds.
Row Compare(const Figure& figure, const std::vector<Contestant>& contestants,
            const Measure& measure);

}  // namespace bench
