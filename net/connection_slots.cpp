#include "net/connection_slots.h"

#include <utility>

#include "platform/process_limits.h"

namespace net {
namespace {

// For the listener, a client with its data connection, a file, a log, and a program's start. With
// fewer the service would run and serve nobody.
constexpr int kDescriptorsToServe = 10;

// Looks within the time that a session may be idle.
constexpr int kIdleLooks = 20;

}  // namespace

ConnectionSlots::ConnectionSlots(SocketContext& context, SlotEngine& engine,
                                 std::string_view protocol, BusySlot busySlot, std::string greeting)
    : context_(context),
      engine_(engine),
      protocol_(protocol),
      busySlot_(busySlot),
      greeting_(std::move(greeting)),
      listener_(context, *this, 0, protocol),
      idleWatch_(context.loop) {}

void ConnectionSlots::Listen(std::int16_t port, std::error_code& error) {
  if (port < 0) {
    error = std::make_error_code(std::errc::invalid_argument);
    return;
  }
  if (!platform::HasFreeDescriptors(kDescriptorsToServe)) {
    error = std::make_error_code(std::errc::too_many_files_open);
    return;
  }
  // One arrival is read as a whole, and the others wait meanwhile.
  listener_.Listen(static_cast<std::uint16_t>(port), platform::ReceiveWindow::kFixed, error);
}

void ConnectionSlots::CreateSlots() {
  for (int slot = 1; slot <= kLastSlot; ++slot) {
    slots_[static_cast<std::size_t>(slot)] =
        std::make_unique<EventSocket>(context_, static_cast<SocketEvents&>(*this), slot, protocol_);
  }
  NextSlot = 0;
}

void ConnectionSlots::Close() {
  listener_.Close();
  idleWatch_.Stop();
  for (auto& slot : slots_) {
    if (slot) slot->Close(ActivityEnd::kServiceStopped);
    slot.reset();
  }
}

bool ConnectionSlots::Exists(int slot) const {
  return slot >= 1 && slot <= kLastSlot && slots_[static_cast<std::size_t>(slot)] != nullptr;
}

bool ConnectionSlots::AreNextFree(int clients) const {
  int slot = NextSlot;
  for (; clients > 0; --clients) {
    slot = After(slot);
    if (!Exists(slot) || !slots_[static_cast<std::size_t>(slot)]->IsClosed()) return false;
  }
  return true;
}

std::vector<ConnectionReport> ConnectionSlots::Report() const {
  std::vector<ConnectionReport> report;
  for (int slot = 1; slot <= kLastSlot; ++slot) {
    const auto& socket = slots_[static_cast<std::size_t>(slot)];
    if (!socket || socket->IsClosed() || !socket->Current()) continue;
    const Connection& connection = *socket->Current();
    report.push_back({std::string(protocol_), slot, socket->RemoteAddress(), connection.Since(),
                      connection.CurrentActivity()});
  }
  return report;
}

void ConnectionSlots::Disconnect(int slot) {
  if (Exists(slot)) (*this)[slot].Close(ActivityEnd::kDisconnected);
}

void ConnectionSlots::OnConnectionRequest(int index, ConnectionRequest& request) {
  if (index != 0) return;
  if (context_.mayConnect && !context_.mayConnect(request)) return;
  NextSlot = static_cast<std::int16_t>(After(NextSlot));
  // The turn is used up even if the request is not accepted.
  EventSocket& slot = (*this)[NextSlot];
  if (!slot.IsClosed()) {
    if (busySlot_ == BusySlot::kRefuse) return;
    slot.Close(ActivityEnd::kEvicted);
  }
  slot.Accept(request);
  if (!greeting_.empty()) slot.SendData(greeting_);
  slot.Current()->StartReading();
  if (!idleWatch_.IsRunning()) WatchIdleSessions();
}

void ConnectionSlots::WatchIdleSessions() {
  const auto limit = context_.idleLimit ? context_.idleLimit() : std::chrono::milliseconds(0);
  if (limit.count() > 0) idleWatch_.Start(limit / kIdleLooks, [this] { LookForIdleSessions(); });
}

void ConnectionSlots::LookForIdleSessions() {
  bool isAnyOpen = false;
  for (std::size_t slot = 1; slot < slots_.size(); ++slot) {
    if (!slots_[slot] || slots_[slot]->IsClosed()) continue;
    isAnyOpen = true;
    if (IsIdleAgain(slot)) engine_.OnIdle(static_cast<int>(slot));
  }
  if (isAnyOpen) WatchIdleSessions();
}

// A command that runs is not idle, however long it waits.
bool ConnectionSlots::IsIdleAgain(std::size_t slot) {
  const Connection& connection = *slots_[slot]->Current();
  Idleness& idle = idleness_[slot];
  const bool isIdle =
      idle.of == &connection && idle.bytes == connection.BytesSoFar() && !connection.HasHandlers();
  idle = {&connection, connection.BytesSoFar(), isIdle ? idle.looks + 1 : 0};
  return idle.looks >= kIdleLooks;
}

Task<> ConnectionSlots::OnDataArrival(int index, std::shared_ptr<Connection> connection) {
  return engine_.OnDataArrival(index, std::move(connection));
}

void ConnectionSlots::OnClose(int index) { engine_.OnClose(index); }

void ConnectionSlots::OnError(int index) { engine_.OnError(index); }

}  // namespace net
