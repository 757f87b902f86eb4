#include "bench/load_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

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

int ConnectAndAsk(const Load& load) {
  const int client = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(load.port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(client, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
    close(client);
    return -1;
  }
  const ssize_t sent = send(client, load.request.data(), load.request.size(), MSG_NOSIGNAL);
  if (sent < 0) {
    close(client);
    return -1;
  }
  return client;
}

// The bytes read; -1 on an error, 0 at the end.
ssize_t ReadSome(int client) {
  static std::array<char, 65536> buffer;
  return recv(client, buffer.data(), buffer.size(), MSG_DONTWAIT);
}

}  // namespace

LoadResult Run(const Load& load) {
  LoadResult result;
  Poll poll;
  std::vector<std::uint64_t> received(65536);
  const auto begin = [&] {
    const int client = ConnectAndAsk(load);
    if (client < 0) {
      ++result.failures;
      return;
    }
    received[static_cast<std::size_t>(client)] = 0;
    poll.Add(client);
  };
  for (int i = 0; i < load.clients; ++i) begin();

  std::uint64_t fetches = 0;
  const Clock::time_point start = Clock::now();
  while (Clock::now() - start < load.duration) {
    poll.Wait([&](int client) {
      std::uint64_t& bytes = received[static_cast<std::size_t>(client)];
      const ssize_t count = ReadSome(client);
      if (count > 0) {
        bytes += static_cast<std::uint64_t>(count);
        return;
      }
      if (count < 0 && errno == EAGAIN) return;
      result.bytes += bytes;
      count == 0 && bytes > 0 ? ++fetches : ++result.failures;
      close(client);
      begin();
    });
  }
  result.fetchesPerSecond = static_cast<double>(fetches) / SecondsSince(start);
  return result;
}

std::vector<Fetched> FetchOnce(const Load& load) {
  std::vector<Fetched> fetched;
  std::vector<int> clients;
  Poll poll;
  const Clock::time_point start = Clock::now();
  for (int i = 0; i < load.clients; ++i) {
    clients.push_back(ConnectAndAsk(load));
    poll.Add(clients.back());
  }
  fetched.resize(clients.size());
  std::size_t open = clients.size();
  while (open > 0 && SecondsSince(start) < 60) {
    poll.Wait([&](int client) {
      const ssize_t count = ReadSome(client);
      if (count < 0 && errno == EAGAIN) return;
      const auto index = static_cast<std::size_t>(
          std::find(clients.begin(), clients.end(), client) - clients.begin());
      fetched[index].seconds = SecondsSince(start);
      if (count > 0) {
        fetched[index].bytes += static_cast<std::uint64_t>(count);
        return;
      }
      close(client);
      --open;
    });
  }
  return fetched;
}

}  // namespace bench
