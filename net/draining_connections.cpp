#include "net/draining_connections.h"

#include <algorithm>
#include <utility>

#include "net/draining_connection.h"

namespace net {

void DrainingConnections::Drain(std::shared_ptr<BufferedSocket> socket, bool peerShut) {
  platform::StreamSocket& stream = socket->Socket();
  if (!socket->HasUnsentBytes()) {
    if (peerShut) return stream.Close();
    // Before any bookkeeping: the peer waits for this, and for nothing of what follows.
    stream.ShutSending();
  }
  const std::shared_ptr<DrainingConnection> connection = TakeOver(socket, peerShut);
  Add(connection);
  if (stream.IsKnown()) connection->AwaitEnd();
}

// Without memory for that the socket has no user, and nobody would close it.
std::shared_ptr<DrainingConnection> DrainingConnections::TakeOver(
    const std::shared_ptr<BufferedSocket>& socket, bool peerShut) {
  try {
    auto connection = std::make_shared<DrainingConnection>(*this, socket, peerShut);
    socket->SetUser(connection);
    return connection;
  } catch (...) {
    socket->Socket().Close();
    throw;
  }
}

void DrainingConnections::Add(std::shared_ptr<DrainingConnection> connection) {
  while (IsTooMuch(connection->WaitingBytes())) {
    const std::shared_ptr<DrainingConnection> oldest = connections_.front();
    connections_.erase(connections_.begin());
    oldest->Reset();
  }
  GlanceAtOldest();
  connections_.push_back(std::move(connection));
  LookAgain();
}

// Most connections have nothing waiting any more, and need no count.
bool DrainingConnections::IsTooMuch(std::size_t moreBytes) const {
  if (connections_.empty()) return false;
  if (connections_.size() >= kMost) return true;
  if (moreBytes == 0) return false;
  std::size_t bytes = moreBytes;
  for (const auto& connection : connections_) bytes += connection->WaitingBytes();
  return bytes > kMostBytes;
}

void DrainingConnections::GlanceAtOldest() {
  constexpr int kMostEnded = 2;  // one more than is added, so that none stay behind
  for (int i = 0; i < kMostEnded && !connections_.empty(); ++i) {
    const std::shared_ptr<DrainingConnection> oldest = connections_.front();
    if (!oldest->EndIfPeerShut()) return;
  }
}

void DrainingConnections::Remove(const DrainingConnection& connection) {
  const auto entry =
      std::find_if(connections_.begin(), connections_.end(),
                   [&](const auto& candidate) { return candidate.get() == &connection; });
  // The alarm goes on: setting and stopping it for every connection would cost more than it does.
  if (entry != connections_.end()) connections_.erase(entry);
}

void DrainingConnections::DropAll() {
  glance_.Stop();
  alarm_.Stop();
  for (const auto& connection : std::exchange(connections_, {})) connection->Abandon();
}

void DrainingConnections::LookAgain() {
  if (!glance_.IsRunning()) glance_.Start(kGlance, [this] { AwaitTheRest(); });
  if (!alarm_.IsRunning()) alarm_.Start(kPatience, [this] { DropIdle(); });
}

void DrainingConnections::AwaitTheRest() {
  const Connections connections = connections_;  // those that are over leave the original
  for (const auto& connection : connections) {
    if (!connection->EndIfPeerShut()) connection->AwaitEnd();
  }
}

// A peer that has taken nothing since the last look had at least that long to do so.
void DrainingConnections::DropIdle() {
  for (const auto& connection : std::exchange(connections_, {})) {
    if (connection->HasProgressed()) {
      connections_.push_back(connection);
    } else {
      connection->Abandon();
    }
  }
  if (!connections_.empty()) alarm_.Start(kPatience, [this] { DropIdle(); });
}

}  // namespace net
