#include "net/draining_connection.h"

#include <asio/socket_base.hpp>
#include <utility>

#include "net/draining_connections.h"
#include "platform/socket_options.h"

namespace net {

using platform::SocketResult;

DrainingConnection::DrainingConnection(DrainingConnections& others,
                                       std::shared_ptr<BufferedSocket> socket, bool peerShut)
    : others_(others), socket_(std::move(socket)), peerShut_(peerShut) {}

bool DrainingConnection::HasProgressed() {
  const std::size_t unconfirmed =
      WaitingBytes() + platform::UnconfirmedBytes(socket_->Socket().Native());
  return unconfirmed < std::exchange(unconfirmed_, unconfirmed);
}

bool DrainingConnection::EndIfPeerShut() {
  constexpr int kMostReads = 16;  // then others get their turn
  SocketResult result = SocketResult::kDone;
  for (int i = 0; i < kMostReads && result == SocketResult::kDone; ++i) {
    result = socket_->Discard();
  }
  if (result == SocketResult::kDone || result == SocketResult::kWouldWait) return false;
  peerShut_ = true;
  const bool over = result == SocketResult::kBroken || !socket_->HasUnsentBytes();
  if (over) Abandon();
  return over;
}

void DrainingConnection::AwaitEnd() {
  if (!peerShut_ && socket_->Socket().IsOpen()) socket_->AwaitReadable();
}

void DrainingConnection::OnReadable() {
  if (!EndIfPeerShut()) AwaitEnd();
}

void DrainingConnection::OnSent() {
  if (peerShut_) return Abandon();
  socket_->Socket().ShutSending();
}

void DrainingConnection::Abandon() {
  socket_->Socket().Close();
  others_.Remove(*this);
}

void DrainingConnection::Reset() {
  platform::StreamSocket& socket = socket_->Socket();
  asio::error_code ignored;
  socket.Known().set_option(asio::socket_base::linger(true, 0), ignored);
  socket.Close();
}

}  // namespace net
