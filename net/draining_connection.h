#pragma once

// A connection that has been closed while its last bytes are still on their way. It sends what the
// outbox holds, shuts the sending side, and reads and throws away what the peer goes on sending,
// until the peer shuts its side, too. A socket closed over unread bytes is reset by the system, and
// the peer would lose the tail of its answer.
//
// DrainingConnections keeps these and bounds their number, their bytes and their time.

#include <cstddef>
#include <limits>
#include <memory>

#include "net/buffered_socket.h"

namespace net {

class DrainingConnections;

class DrainingConnection final : public BufferedSocket::User {
 public:
  /// `peerShut`: nothing more will arrive.
  DrainingConnection(DrainingConnections& others, std::shared_ptr<BufferedSocket> socket,
                     bool peerShut);
  ~DrainingConnection() override { socket_->Socket().Close(); }
  DrainingConnection(const DrainingConnection&) = delete;
  DrainingConnection& operator=(const DrainingConnection&) = delete;

  /// The bytes that the system has yet to take.
  std::size_t WaitingBytes() const { return socket_->UnsentBytes(); }

  /// Whether the peer has taken anything since the last call, or this is the first.
  bool HasProgressed();

  /// Throws away what has come in. True if the connection is over with it.
  bool EndIfPeerShut();

  /// Goes on throwing away what comes in when it comes.
  void AwaitEnd();

  /// Closes the socket; the system still delivers what it has.
  void Abandon();

  /// Closes the socket and drops what was not sent.
  void Reset();

 private:
  void OnReadable() override;
  void OnSent() override;
  void OnFailure() override { Abandon(); }

  static constexpr std::size_t kNotLookedAt = std::numeric_limits<std::size_t>::max();

  DrainingConnections& others_;
  std::shared_ptr<BufferedSocket> socket_;
  std::size_t unconfirmed_ = kNotLookedAt;  // at the last look
  bool peerShut_;
};

}  // namespace net
