#include "net/draining_connections.h"

#include <algorithm>

#include "net/connection.h"

namespace net {

void DrainingConnections::Add(std::shared_ptr<Connection> connection) {
  while (IsTooMuch(connection->WaitingBytes())) {
    const std::shared_ptr<Connection> oldest = entries_.front().connection;
    entries_.pop_front();
    oldest->Reset();
  }
  GlanceAtOldest();
  entries_.push_back({std::move(connection)});
  LookAgain();
}

// Most connections have nothing waiting any more, and need no count.
bool DrainingConnections::IsTooMuch(std::size_t moreBytes) const {
  if (entries_.empty()) return false;
  if (entries_.size() >= kMost) return true;
  if (moreBytes == 0) return false;
  std::size_t bytes = moreBytes;
  for (const Entry& entry : entries_) bytes += entry.connection->WaitingBytes();
  return bytes > kMostBytes;
}

void DrainingConnections::GlanceAtOldest() {
  constexpr int kMostEnded = 2;  // one more than comes, so that none stay behind
  for (int i = 0; i < kMostEnded && !entries_.empty(); ++i) {
    const std::shared_ptr<Connection> oldest = entries_.front().connection;
    if (!oldest->EndIfPeerShut()) return;
  }
}

void DrainingConnections::Remove(Connection& connection) {
  const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) {
    return e.connection.get() == &connection;
  });
  // The alarm goes on: setting and stopping it for every connection would cost more than it does.
  if (entry != entries_.end()) entries_.erase(entry);
}

void DrainingConnections::DropAll() {
  glance_.Stop();
  alarm_.Stop();
  for (const Entry& entry : std::exchange(entries_, {})) entry.connection->Abandon();
}

void DrainingConnections::LookAgain() {
  if (!glance_.IsRunning()) glance_.Start(kGlance, [this] { AwaitTheRest(); });
  if (!alarm_.IsRunning()) alarm_.Start(kPatience, [this] { DropIdle(); });
}

void DrainingConnections::AwaitTheRest() {
  const std::list<Entry> entries = entries_;  // those that are over leave the list
  for (const Entry& entry : entries) {
    if (!entry.connection->EndIfPeerShut()) entry.connection->AwaitEnd();
  }
}

// Whoever has taken nothing since the last look had at least that long to do so.
void DrainingConnections::DropIdle() {
  std::list<Entry> entries = std::exchange(entries_, {});
  for (Entry& entry : entries) {
    const std::size_t unsent = entry.connection->UnsentBytes();
    if (unsent < entry.unsent) {
      entry.unsent = unsent;
      entries_.push_back(std::move(entry));
    } else {
      entry.connection->Abandon();
    }
  }
  if (!entries_.empty()) alarm_.Start(kPatience, [this] { DropIdle(); });
}

}  // namespace net
