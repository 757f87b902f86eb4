#pragma once

// The listener of a service and its nineteen connection slots, with the accept rule that all
// services share: slots are handed out strictly in turn, without a search for a free one. What is
// said on the connections is the business of the service's engine.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "net/connection_report.h"
#include "net/event_socket.h"

namespace net {

/// The events that a protocol engine gets. Slots are numbered 1 to 19.
class SlotEngine {
 public:
  /// An arrival; `connection` is the one that the slot carries now.
  virtual Task<> OnDataArrival(int slot, std::shared_ptr<Connection> connection) = 0;

  /// The peer has shut its side. The engine closes the slot.
  virtual void OnClose(int slot) = 0;

  /// The connection broke. The engine closes the slot.
  virtual void OnError(int slot) = 0;

  /// The session has been idle for too long (SocketContext::idleLimit). The engine closes the slot.
  virtual void OnIdle(int slot) { static_cast<void>(slot); }

 protected:
  ~SlotEngine() = default;
};

class ConnectionSlots final : private SocketEvents {
 public:
  static constexpr int kLastSlot = 19;

  /// What happens to a client whose turn falls on a slot that is not closed.
  enum class BusySlot {
    kEvict,   // it gets the slot, and the connection there is closed
    kRefuse,  // it is closed without a greeting
  };

  /// `protocol`, a constant, names the connections in reports. `greeting`, line end included, is
  /// sent on every accepted connection; empty for none.
  ConnectionSlots(SocketContext& context, SlotEngine& engine, std::string_view protocol,
                  BusySlot busySlot, std::string greeting);
  ~ConnectionSlots() { Close(); }

  /// Listens on `port` with element 0. Fails also if the process has too few descriptors left to
  /// serve a client.
  void Listen(std::int16_t port, std::error_code& error);

  /// Creates the slots; the next client gets slot 1.
  void CreateSlots();

  /// Closes the listener and every connection, without sending anything.
  void Close();

  bool IsListening() const { return listener_.State() == SocketState::kListening; }
  EventSocket& Listener() { return listener_; }
  const EventSocket& Listener() const { return listener_; }

  /// Whether `slot` is a valid number and the slots have been created.
  bool Exists(int slot) const;

  /// Whether the next `clients` clients would find their slots free, so that none is cut off for
  /// them. False while there are no slots.
  bool AreNextFree(int clients) const;

  /// The open connections, by slot.
  std::vector<ConnectionReport> Report() const;

  /// Closes the connection of a slot on the user's request; does nothing if there is none.
  void Disconnect(int slot);

  EventSocket& operator[](int slot) { return *slots_.at(static_cast<std::size_t>(slot)); }

 private:
  static int After(int slot) { return slot >= kLastSlot ? 1 : slot + 1; }

  // What a session had done by the last look at it.
  struct Idleness {
    const Connection* of = nullptr;
    std::uint64_t bytes = 0;
    int looks = 0;  // in a row at which it had done nothing
  };

  void WatchIdleSessions();
  void LookForIdleSessions();
  bool IsIdleAgain(std::size_t slot);
  void OnConnectionRequest(int index, ConnectionRequest& request) override;
  Task<> OnDataArrival(int index, std::shared_ptr<Connection> connection) override;
  void OnClose(int index) override;
  void OnError(int index) override;

  SocketContext& context_;
  SlotEngine& engine_;
  std::string_view protocol_;
  BusySlot busySlot_;
  std::string greeting_;
  EventSocket listener_;
  std::array<std::unique_ptr<EventSocket>, kLastSlot + 1> slots_;  // element 0 stays empty
  std::array<Idleness, kLastSlot + 1> idleness_ = {};
  Timer idleWatch_;           // runs while there may be a session that is limited
  std::int16_t NextSlot = 0;  // the slot of the most recent request
};

}  // namespace net
