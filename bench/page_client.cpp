#include "bench/page_client.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <string_view>
#include <vector>

#include "bench/failure.h"
#include "bench/http_response.h"
#include "bench/sockets.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

// The files still to be asked for, in order.
class Wanted {
 public:
  Wanted(const Page& page, bool keepsAlive) : page_(page), keepsAlive_(keepsAlive) {}

  bool IsEmpty() const { return next_ == page_.pictureCount; }
  std::string NextRequest() {
    return HttpResponse::Request(page_.pictures + "/" + std::to_string(next_++) + ".png",
                                 keepsAlive_);
  }

 private:
  const Page& page_;
  bool keepsAlive_;
  int next_ = 0;
};

// One of the connections at a time: a request and its response.
class Fetcher {
 public:
  Fetcher(std::uint16_t port, bool keepsAlive) : port_(port), keepsAlive_(keepsAlive) {}

  bool IsBusy() const { return isBusy_; }
  int Number() const { return connection_.Number(); }

  void Ask(const std::string& request) {
    if (connection_.Number() < 0) connection_ = ConnectTo(port_);
    response_ = {};
    isBusy_ = true;
    SendAll(connection_.Number(), request);
  }

  void Read(std::size_t wantedBytes) {
    static std::array<char, 65536> buffer;
    const ssize_t count = recv(connection_.Number(), buffer.data(), buffer.size(), 0);
    Expect(count > 0, "a connection ends before its response");
    response_.Take({buffer.data(), static_cast<std::size_t>(count)});
    if (!response_.IsWhole()) return;
    Expect(response_.IsFound(wantedBytes), "a response is not the file");
    isBusy_ = false;
    if (!keepsAlive_) connection_.Close();
  }

 private:
  std::uint16_t port_;
  bool keepsAlive_;
  Descriptor connection_;
  HttpResponse response_;
  bool isBusy_ = false;
};

void WaitForAny(std::vector<Fetcher>& fetchers, std::size_t wantedBytes) {
  std::vector<pollfd> waiting;
  for (const Fetcher& fetcher : fetchers) {
    waiting.push_back({fetcher.IsBusy() ? fetcher.Number() : -1, POLLIN, 0});
  }
  Expect(poll(waiting.data(), waiting.size(), 10000) > 0, "a response does not come");
  for (std::size_t i = 0; i < waiting.size(); ++i) {
    if (waiting[i].revents != 0) fetchers[i].Read(wantedBytes);
  }
}

}  // namespace

double FetchPage(std::uint16_t port, const Page& page, int connections, bool keepsAlive) {
  std::vector<Fetcher> fetchers;
  for (int i = 0; i < connections; ++i) fetchers.emplace_back(port, keepsAlive);
  Wanted wanted(page, keepsAlive);
  const Clock::time_point start = Clock::now();
  fetchers.front().Ask(HttpResponse::Request(page.name, keepsAlive));
  while (fetchers.front().IsBusy()) fetchers.front().Read(page.bytes);
  while (true) {
    bool isBusy = false;
    for (Fetcher& fetcher : fetchers) {
      if (!fetcher.IsBusy() && !wanted.IsEmpty()) fetcher.Ask(wanted.NextRequest());
      isBusy = isBusy || fetcher.IsBusy();
    }
    if (!isBusy) return SecondsSince(start);
    WaitForAny(fetchers, page.pictureBytes);
  }
}

}  // namespace bench
