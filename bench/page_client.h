#pragma once

// A browser's way to a page: the page, then its pictures over several connections at a time.

#include <cstddef>
#include <cstdint>
#include <string>

namespace bench {

struct Page {
  std::string name;
  std::size_t bytes = 0;
  std::string pictures;  // a folder with 0.png, 1.png, ...
  int pictureCount = 0;
  std::size_t pictureBytes = 0;
};

/// The seconds until all of it has arrived. A connection is kept for further files, or each file
/// has its own. Throws if an answer is not the file.
double FetchPage(std::uint16_t port, const Page& page, int connections, bool keepsAlive);

}  // namespace bench
