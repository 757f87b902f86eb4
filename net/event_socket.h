#pragma once

// One element of a service's socket array, as the protocol engines are written against it: a
// listener, or the carrier of one connection after another. It hides the socket library.

#include <cstdint>
#include <memory>
#include <string>
#include <system_error>

#include "net/connection.h"

namespace net {

/// A client that has asked for a connection. Whoever is told of it may accept it on an element of
/// his; if nobody has by the time it dies, it is closed without a byte.
class ConnectionRequest {
 public:
  explicit ConnectionRequest(platform::StreamSocket socket) : socket_(std::move(socket)) {}
  platform::StreamSocket Take() { return std::move(socket_); }

 private:
  platform::StreamSocket socket_;
};

/// Who is told of the events of a socket array; `index` is the element's.
class SocketEvents {
 public:
  virtual void OnConnectionRequest(int index, ConnectionRequest& request) = 0;
  /// An own attempt to connect has succeeded. Nothing has been read yet.
  virtual void OnConnect(int index) { static_cast<void>(index); }
  virtual Task<> OnDataArrival(int index, std::shared_ptr<Connection> connection) = 0;
  virtual void OnClose(int index) = 0;
  virtual void OnError(int index) = 0;

 protected:
  ~SocketEvents() = default;
};

class EventSocket final : private ConnectionOwner {
 public:
  EventSocket(SocketContext& context, SocketEvents& events, int index);
  ~EventSocket();
  EventSocket(const EventSocket&) = delete;
  EventSocket& operator=(const EventSocket&) = delete;

  /// Listens on `port` (0: one that the system chooses) of all local IPv4 addresses.
  void Listen(std::uint16_t port, std::error_code& error);

  /// Carries the requested connection; what was carried before must have been closed. Its arrivals
  /// are read once StartReading is called on it.
  void Accept(ConnectionRequest& request);

  /// Starts to connect to an IPv4 address, from `localPort` if the system lets us have it, else
  /// from one that it chooses. The state is kConnecting until it is kConnected or kError.
  void Connect(std::uint16_t localPort, const std::string& address, std::uint16_t port);

  /// Ends listening, or the connection (gracefully).
  void Close();

  SocketState State() const;
  bool IsClosed() const { return State() == SocketState::kClosed; }

  /// The connection carried now, or null.
  const std::shared_ptr<Connection>& Current() const { return connection_; }

  std::string GetData();
  void SendData(std::string_view bytes);

  /// Of the connection; for a listener the machine's own address.
  std::string LocalAddress() const;
  std::string RemoteAddress() const;
  std::uint16_t LocalPort() const;

  /// Wakes whoever waits for another state of this element.
  WaitList& StateChanges() { return stateChanges_; }

 private:
  class Listener;
  class Connector;

  void Carry(std::shared_ptr<Connection> connection);
  void OnConnected(platform::StreamSocket socket);
  void OnConnectFailure();

  Task<> OnArrival(std::shared_ptr<Connection> connection) override;
  void OnPeerClose() override;
  void OnBreak() override;
  void OnEnd() override;

  SocketContext& context_;
  SocketEvents& events_;
  int index_;
  std::shared_ptr<Listener> listener_;
  std::shared_ptr<Connector> connector_;
  std::shared_ptr<Connection> connection_;
  bool failed_ = false;
  WaitList stateChanges_;
};

}  // namespace net
