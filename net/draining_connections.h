#pragma once

// Connections that are closed for the program while their last bytes are still on their way. The
// sending side is shut, and what the peer goes on sending is read and thrown away: a socket closed
// over unread bytes is reset by the system, and the peer loses the tail of its answer.
//
// Most peers shut their side a moment later. That is seen by looking at the oldest ones whenever
// another comes, and at all of them soon after; only who takes longer is waited for.
//
// Bounded in number and in the bytes that wait for their peers, the oldest going first, and in
// time: a peer that takes nothing for a few seconds is given up.

#include <cstddef>
#include <limits>
#include <list>
#include <memory>

#include "net/event_loop.h"

namespace net {

class Connection;

class DrainingConnections {
 public:
  explicit DrainingConnections(EventLoop& loop) : glance_(loop), alarm_(loop) {}
  ~DrainingConnections() { DropAll(); }

  void Add(std::shared_ptr<Connection> connection);

  /// The connection has nothing more to send and its peer has shut its side, or it broke.
  void Remove(Connection& connection);

  /// Closes them all at once; the system still delivers what it has.
  void DropAll();

  std::size_t Count() const { return entries_.size(); }

 private:
  static constexpr std::size_t kMost = 256;
  static constexpr std::size_t kMostBytes = 96U << 20;  // but for a single connection's
  static constexpr std::size_t kNotLookedAt = std::numeric_limits<std::size_t>::max();
  static constexpr std::chrono::seconds kPatience{5};
  static constexpr std::chrono::milliseconds kGlance{50};

  struct Entry {
    std::shared_ptr<Connection> connection;
    std::size_t unsent = kNotLookedAt;  // at the last look
  };

  bool IsTooMuch(std::size_t moreBytes) const;
  void GlanceAtOldest();
  void LookAgain();
  void AwaitTheRest();
  void DropIdle();

  std::list<Entry> entries_;  // oldest first
  Timer glance_;
  Timer alarm_;
};

}  // namespace net
