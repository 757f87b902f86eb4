#pragma once

// One element of a service's socket array, which is what protocol engines are written against: a
// listener, or the carrier of one connection after another. It hides the socket library.

#include <cstdint>
#include <memory>
#include <string>
#include <system_error>

#include "net/connection.h"
#include "platform/acceptor.h"

namespace net {

/// A client that has asked for a connection. It may be accepted on any element; if it has not been
/// when this object is destroyed, the client is closed without having been sent a byte.
class ConnectionRequest {
 public:
  explicit ConnectionRequest(platform::StreamSocket socket) : socket_(std::move(socket)) {}
  platform::StreamSocket Take() { return std::move(socket_); }

  /// The client's IPv4 address, as a number in host byte order and as text.
  std::uint32_t Peer() const;
  std::string RemoteAddress() const;

 private:
  platform::StreamSocket socket_;
};

/// Gets the events of a socket array; `index` is the element's.
class SocketEvents {
 public:
  virtual void OnConnectionRequest(int index, ConnectionRequest& request) = 0;
  /// EventSocket::Connect has succeeded. Nothing has been read yet.
  virtual void OnConnect(int index) { static_cast<void>(index); }
  virtual Task<> OnDataArrival(int index, std::shared_ptr<Connection> connection) = 0;
  virtual void OnClose(int index) = 0;
  virtual void OnError(int index) = 0;

 protected:
  ~SocketEvents() = default;
};

class EventSocket final : private Connection::Owner {
 public:
  /// `protocol`, a constant, names its connections in reports.
  EventSocket(SocketContext& context, SocketEvents& events, int index, std::string_view protocol);
  ~EventSocket();
  EventSocket(const EventSocket&) = delete;
  EventSocket& operator=(const EventSocket&) = delete;

  /// Listens on `port` (0: one that the system chooses) of all local IPv4 addresses.
  void Listen(std::uint16_t port, platform::ReceiveWindow window, std::error_code& error);

  /// Carries the requested connection. The one carried before must have been closed. Nothing is
  /// read until StartReading is called on the connection.
  void Accept(ConnectionRequest& request);

  /// Starts to connect to an IPv4 address, from `localPort` if that is free, else from a port that
  /// the system chooses. The state is kConnecting until it is kConnected or kError.
  void Connect(std::uint16_t localPort, const std::string& address, std::uint16_t port);

  /// Stops listening, or closes the connection as Connection::Close does.
  void Close(ActivityEnd end = ActivityEnd::kComplete);

  SocketState State() const;
  bool IsClosed() const { return State() == SocketState::kClosed; }

  /// The connection carried now, or null.
  const std::shared_ptr<Connection>& Current() const { return connection_; }

  std::string GetData();
  void SendData(std::string_view bytes);

  /// The connection's; without one, the address from which this machine reaches others.
  std::string LocalAddress() const;
  std::string RemoteAddress() const;
  std::uint16_t LocalPort() const;

  /// Handlers in this list are woken when the state changes.
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
  std::string_view protocol_;
  std::shared_ptr<Listener> listener_;
  std::shared_ptr<Connector> connector_;
  std::shared_ptr<Connection> connection_;
  bool failed_ = false;
  WaitList stateChanges_;
};

}  // namespace net
