#pragma once

// Clients that fetch in a loop from one thread, with a new connection for each fetch.

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct Load {
  std::uint16_t port = 0;
  std::string request;
  int clients = 1;
  std::chrono::milliseconds duration{1000};
  std::uint64_t answerBytes = 0;  // the length of a whole answer, with all that comes before it
};

struct LoadResult {
  double fetchesPerSecond = 0;
  std::uint64_t fetches = 0;   // whole answers
  std::uint64_t failures = 0;  // connections refused, broken off, or with another answer
};

/// Fetches for `duration`.
LoadResult Run(const Load& load);

/// One fetch by each of `clients` at the same time: the seconds from connecting to the last byte,
/// and the bytes received.
struct Fetched {
  double seconds = 0;
  std::uint64_t bytes = 0;
};
std::vector<Fetched> FetchOnce(const Load& load);

}  // namespace bench
