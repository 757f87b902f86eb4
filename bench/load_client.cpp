#include "bench/load_client.h"

#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <map>
#include <utility>

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

  void Add(int socket, bool isConnected) { Watch(EPOLL_CTL_ADD, socket, isConnected); }
  void SetConnected(int socket) { Watch(EPOLL_CTL_MOD, socket, true); }

  template <class Action>
  void Wait(Action action) {
    std::array<epoll_event, 64> events;
    const int count = epoll_wait(descriptor_, events.data(), events.size(), 1000);
    for (int i = 0; i < count; ++i) action(events[static_cast<std::size_t>(i)].data.fd);
  }

 private:
  void Watch(int operation, int socket, bool isConnected) const {
    epoll_event event = {};
    event.events = isConnected ? EPOLLIN : EPOLLIN | EPOLLOUT;
    event.data.fd = socket;
    epoll_ctl(descriptor_, operation, socket, &event);
  }

  int descriptor_;
};

// A client that never waits: a server that is slow to accept delays no other client of it.
class Fetching {
 public:
  explicit Fetching(const Load& load)
      : load_(&load), client_(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
    const sockaddr_in address = Loopback(load.port);
    connect(Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    Ask();
  }

  int Number() const { return client_.Number(); }
  bool HasAsked() const { return hasAsked_; }
  void Ask() {
    const ssize_t sent = send(Number(), load_->request.data(), load_->request.size(), MSG_NOSIGNAL);
    hasAsked_ = sent == static_cast<ssize_t>(load_->request.size());
  }

  std::uint64_t bytes = 0;

 private:
  const Load* load_;
  Descriptor client_;
  bool hasAsked_ = false;
};

struct Progress {
  int number = 0;  // the client's
  std::uint64_t bytes = 0;
  bool isOver = false;  // then the client is gone
  bool isBroken = false;
};

// All open connections.
class Fetchings {
 public:
  explicit Fetchings(const Load& load) : load_(load) {}

  bool IsEmpty() const { return open_.empty(); }
  int Begin() {
    Fetching fetching(load_);
    const int number = fetching.Number();
    poll_.Add(number, fetching.HasAsked());
    open_.emplace(number, std::move(fetching));
    return number;
  }

  /// Calls `report` with what has arrived for each client, and with its end.
  template <class Report>
  void Wait(const Report& report) {
    poll_.Wait([&](int number) { Serve(number, report); });
  }

 private:
  template <class Report>
  void Serve(int number, const Report& report);

  const Load& load_;
  Poll poll_;
  std::map<int, Fetching> open_;
};

// The bytes read; -1 on an error, 0 at the end.
ssize_t ReadSome(int client) {
  static std::array<char, 65536> buffer;
  return recv(client, buffer.data(), buffer.size(), MSG_DONTWAIT);
}

template <class Report>
void Fetchings::Serve(int number, const Report& report) {
  Fetching& fetching = open_.at(number);
  if (!fetching.HasAsked()) {
    fetching.Ask();
    if (fetching.HasAsked()) poll_.SetConnected(number);
  }
  const ssize_t count = ReadSome(number);
  if (count < 0 && errno == EAGAIN) return;
  if (count > 0) fetching.bytes += static_cast<std::uint64_t>(count);
  const std::uint64_t bytes = fetching.bytes;
  if (count <= 0) open_.erase(number);
  report(Progress{.number = number, .bytes = bytes, .isOver = count <= 0, .isBroken = count < 0});
}

}  // namespace

LoadResult Run(const Load& load) {
  LoadResult result;
  Fetchings open(load);
  for (int i = 0; i < load.clients; ++i) open.Begin();
  const Clock::time_point start = Clock::now();
  while (SecondsSince(start) < static_cast<double>(load.duration.count()) / 1000) {
    open.Wait([&](const Progress& progress) {
      if (!progress.isOver) return;
      const bool isWhole = !progress.isBroken && progress.bytes == load.answerBytes;
      ++(isWhole ? result.fetches : result.failures);
      open.Begin();
    });
  }
  result.fetchesPerSecond = static_cast<double>(result.fetches) / SecondsSince(start);
  return result;
}

std::vector<Fetched> FetchOnce(const Load& load) {
  std::vector<Fetched> fetched(static_cast<std::size_t>(load.clients));
  std::map<int, Fetched*> byNumber;
  Fetchings open(load);
  const Clock::time_point start = Clock::now();
  for (Fetched& one : fetched) byNumber[open.Begin()] = &one;
  while (!open.IsEmpty() && SecondsSince(start) < 60) {
    open.Wait([&](const Progress& progress) {
      *byNumber.at(progress.number) = {SecondsSince(start), progress.bytes};
    });
  }
  return fetched;
}

}  // namespace bench
