#pragma once

// The connections of a service that are closed for the program while their last bytes are still on
// their way (net/draining_connection.h).
//
// Most peers shut their side a moment after the close. Asking the system to wait for that costs
// more than a glance at the oldest connections whenever another is added, and at all of them soon
// after; only those that take longer are waited for.
//
// Bounded in number and in the bytes that wait for their peers, the oldest going first, and in
// time: a peer that takes nothing for a few seconds is given up.

#include <chrono>
#include <cstddef>
#include <memory>
#include <vector>

#include "net/buffered_socket.h"
#include "net/event_loop.h"

namespace net {

class DrainingConnection;

class DrainingConnections {
 public:
  explicit DrainingConnections(EventLoop& loop) : glance_(loop), alarm_(loop) {}
  ~DrainingConnections() { DropAll(); }

  /// Takes over the socket of a connection that is being closed: shuts its sending side as soon as
  /// the outbox is empty, and closes it when the peer has shut its own, which it has already if
  /// `peerShut`.
  void Drain(std::shared_ptr<BufferedSocket> socket, bool peerShut);

  /// Forgets a connection that is over.
  void Remove(const DrainingConnection& connection);

  /// Closes them all at once; the system still delivers what it has.
  void DropAll();

  std::size_t Count() const { return connections_.size(); }

 private:
  static constexpr std::size_t kMost = 256;
  static constexpr std::size_t kMostBytes = 96U << 20;  // but for a single connection's
  static constexpr std::chrono::seconds kPatience{5};
  static constexpr std::chrono::milliseconds kGlance{50};

  // A vector, since it is short at the busiest times, and does not allocate for each connection.
  using Connections = std::vector<std::shared_ptr<DrainingConnection>>;

  std::shared_ptr<DrainingConnection> TakeOver(const std::shared_ptr<BufferedSocket>& socket,
                                               bool peerShut);
  void Add(std::shared_ptr<DrainingConnection> connection);
  bool IsTooMuch(std::size_t moreBytes) const;
  void GlanceAtOldest();
  void LookAgain();
  void AwaitTheRest();
  void DropIdle();

  Connections connections_;  // oldest first
  Timer glance_;
  Timer alarm_;
};

}  // namespace net
