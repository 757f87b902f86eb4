#include "bench/load_client.h"

#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <map>
#include <utility>

#include "bench/failure.h"
#include "bench/sockets.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

// An epoll set and its sockets, keyed by descriptor.
class Poll {
 public:
  Poll() : descriptor_(epoll_create1(0)) {}
  ~Poll() { close(descriptor_); }
  Poll(const Poll&) = delete;
  Poll& operator=(const Poll&) = delete;

  void Add(int socket) {
    epoll_event event = {};
    event.events = EPOLLIN;
    event.data.fd = socket;
    epoll_ctl(descriptor_, EPOLL_CTL_ADD, socket, &event);
  }
  template <class Action>
  void Wait(Action action) {
    std::array<epoll_event, 64> events;
    const int count = epoll_wait(descriptor_, events.data(), events.size(), 1000);
    for (int i = 0; i < count; ++i) action(events[static_cast<std::size_t>(i)].data.fd);
  }

 private:
  int descriptor_;
};

// The connected socket, which holds no descriptor if that failed.
Descriptor ConnectAndAsk(const Load& load) {
  Descriptor client = TryConnectTo(load.port);
  if (client.Number() >= 0) SendAll(client.Number(), load.request);
  return client;
}

// The bytes read; -1 on an error, 0 at the end.
ssize_t ReadSome(int client) {
  static std::array<char, 65536> buffer;
  return recv(client, buffer.data(), buffer.size(), MSG_DONTWAIT);
}

struct Fetching {
  Descriptor client;
  std::uint64_t bytes = 0;
};

}  // namespace

LoadResult Run(const Load& load) {
  LoadResult result;
  Poll poll;
  std::map<int, Fetching> open;
  const auto begin = [&] {
    Descriptor client = ConnectAndAsk(load);
    const int number = client.Number();
    if (number < 0) {
      ++result.failures;
      return;
    }
    poll.Add(number);
    open.emplace(number, Fetching{std::move(client)});
  };
  for (int i = 0; i < load.clients; ++i) begin();

  const Clock::time_point start = Clock::now();
  while (SecondsSince(start) < load.duration.count() / 1000.0) {
    poll.Wait([&](int client) {
      Fetching& fetching = open.at(client);
      const ssize_t count = ReadSome(client);
      if (count > 0) fetching.bytes += static_cast<std::uint64_t>(count);
      if (count > 0 || (count < 0 && errno == EAGAIN)) return;
      const bool isWhole = count == 0 && fetching.bytes == load.answerBytes;
      isWhole ? ++result.fetches : ++result.failures;
      open.erase(client);
      begin();
    });
  }
  result.fetchesPerSecond = static_cast<double>(result.fetches) / SecondsSince(start);
  return result;
}

std::vector<Fetched> FetchOnce(const Load& load) {
  std::vector<Fetched> fetched(static_cast<std::size_t>(load.clients));
  std::map<int, std::pair<Descriptor, Fetched*>> open;
  Poll poll;
  const Clock::time_point start = Clock::now();
  for (Fetched& one : fetched) {
    Descriptor client = ConnectAndAsk(load);
    const int number = client.Number();
    Expect(number >= 0, "a client is refused");
    poll.Add(number);
    open.emplace(number, std::make_pair(std::move(client), &one));
  }
  while (!open.empty() && SecondsSince(start) < 60) {
    poll.Wait([&](int client) {
      const ssize_t count = ReadSome(client);
      if (count < 0 && errno == EAGAIN) return;
      Fetched& one = *open.at(client).second;
      one.seconds = SecondsSince(start);
      if (count <= 0) open.erase(client);
      if (count > 0) one.bytes += static_cast<std::uint64_t>(count);
    });
  }
  return fetched;
}

}  // namespace bench
