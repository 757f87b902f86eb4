#include "net/event_socket.h"

#include <asio/ip/udp.hpp>
#include <functional>
#include <utility>
#include <vector>

#include "platform/socket_errors.h"
#include "platform/socket_options.h"

namespace net {
namespace {

using Tcp = asio::ip::tcp;

platform::NativeSocket NativeOf(auto& socket) {
  return static_cast<platform::NativeSocket>(socket.native_handle());
}

// Nothing is sent: connecting a datagram socket only looks up the route.
std::string MachineAddress(EventLoop& loop) {
  constexpr std::uint16_t kDiscardPort = 9;
  asio::error_code error;
  asio::ip::udp::socket probe(loop.Executor());
  probe.connect({asio::ip::make_address_v4("192.0.2.1"), kDiscardPort}, error);
  const auto local = probe.local_endpoint(error);
  return error ? "127.0.0.1" : local.address().to_string();
}

}  // namespace

std::uint32_t ConnectionRequest::Peer() const { return socket_.Peer().to_v4().to_uint(); }

std::string ConnectionRequest::RemoteAddress() const { return socket_.Peer().to_string(); }

// Accepts for as long as the element listens. Pending operations keep it alive after the element
// has been closed.
class EventSocket::Listener : public std::enable_shared_from_this<EventSocket::Listener> {
 public:
  using OnRequest = std::function<void(ConnectionRequest&)>;

  Listener(EventLoop& loop, OnRequest onRequest)
      : loop_(loop), acceptor_(loop.Executor()), retry_(loop), onRequest_(std::move(onRequest)) {}

  void Open(std::uint16_t port, platform::ReceiveWindow window, asio::error_code& error) {
    acceptor_.Open(port, window, error);
    if (!error) AcceptNext();
  }

  void Close() {
    acceptor_.Close();
    retry_.Stop();
    onRequest_ = nullptr;
  }

  std::uint16_t Port() const { return acceptor_.Port(); }

 private:
  void AcceptNext() {
    acceptor_.AsyncAccept([self = shared_from_this()](const asio::error_code& error,
                                                      std::vector<platform::StreamSocket> sockets) {
      self->OnAccepted(error, std::move(sockets));
    });
  }

  void OnAccepted(const asio::error_code& error, std::vector<platform::StreamSocket> sockets) {
    for (platform::StreamSocket& socket : sockets) {
      if (!onRequest_) return;
      ConnectionRequest request(std::move(socket));
      const OnRequest onRequest = onRequest_;  // which may close this listener
      loop_.Guard([&] { onRequest(request); });
    }
    if (!onRequest_) return;
    if (platform::IsShortage(error)) {
      // Retrying at once would only burn time.
      retry_.Start(std::chrono::milliseconds(100), [this] { AcceptNext(); });
    } else {
      // Any other error is a client that left before it could be accepted.
      AcceptNext();
    }
  }

  EventLoop& loop_;
  platform::Acceptor acceptor_;
  Timer retry_;
  OnRequest onRequest_;
};

// One attempt to connect.
class EventSocket::Connector : public std::enable_shared_from_this<EventSocket::Connector> {
 public:
  Connector(EventSocket& owner, EventLoop& loop) : owner_(&owner), socket_(loop.Executor()) {}

  void Start(std::uint16_t localPort, const Tcp::endpoint& peer) {
    asio::error_code error;
    Bind(localPort, error);
    if (error) Bind(localPort = 0, error);
    socket_.async_connect(
        peer, [self = shared_from_this(), localPort, peer](const asio::error_code& failure) {
          if (self->owner_ == nullptr) return;
          // The same pair of ports was in use a moment ago and is still blocked by the system.
          if (localPort != 0 && platform::IsAddressRefused(failure)) return self->Start(0, peer);
          if (failure) return self->owner_->OnConnectFailure();
          self->owner_->OnConnected(platform::StreamSocket(std::move(self->socket_)));
        });
  }

  void Cancel() {
    owner_ = nullptr;
    asio::error_code ignored;
    socket_.close(ignored);
  }

 private:
  void Bind(std::uint16_t localPort, asio::error_code& error) {
    asio::error_code ignored;
    socket_.close(ignored);
    socket_.open(Tcp::v4(), error);
    if (error) return;
    socket_.set_option(asio::socket_base::reuse_address(true), ignored);
    platform::PrepareForTraffic(NativeOf(socket_));
    if (localPort != 0) socket_.bind({Tcp::v4(), localPort}, error);
  }

  EventSocket* owner_;
  Tcp::socket socket_;
};

EventSocket::EventSocket(SocketContext& context, SocketEvents& events, int index,
                         std::string_view protocol)
    : context_(context), events_(events), index_(index), protocol_(protocol) {}

EventSocket::~EventSocket() { Close(); }

void EventSocket::Listen(std::uint16_t port, platform::ReceiveWindow window,
                         std::error_code& error) {
  Close();
  listener_ = std::make_shared<Listener>(context_.loop, [this](ConnectionRequest& request) {
    events_.OnConnectionRequest(index_, request);
  });
  listener_->Open(port, window, error);
  if (error) Close();
}

void EventSocket::Accept(ConnectionRequest& request) {
  Carry(Connection::Adopt(context_, request.Take(), *this, {protocol_, index_}));
}

void EventSocket::Connect(std::uint16_t localPort, const std::string& address, std::uint16_t port) {
  Close();
  asio::error_code error;
  const asio::ip::address_v4 host = asio::ip::make_address_v4(address, error);
  if (error) return OnConnectFailure();
  connector_ = std::make_shared<Connector>(*this, context_.loop);
  connector_->Start(localPort, {host, port});
}

void EventSocket::Close(ActivityEnd end) {
  failed_ = false;
  if (const auto listener = std::exchange(listener_, nullptr)) listener->Close();
  if (const auto connector = std::exchange(connector_, nullptr)) connector->Cancel();
  if (const auto connection = std::exchange(connection_, nullptr)) connection->Close(end);
  stateChanges_.WakeAll();
}

SocketState EventSocket::State() const {
  if (connection_) return connection_->State();
  if (connector_) return SocketState::kConnecting;
  if (listener_) return SocketState::kListening;
  return failed_ ? SocketState::kError : SocketState::kClosed;
}

std::string EventSocket::GetData() { return connection_ ? connection_->GetData() : std::string(); }

void EventSocket::SendData(std::string_view bytes) {
  if (connection_) connection_->SendData(bytes);
}

std::string EventSocket::LocalAddress() const {
  return connection_ ? connection_->LocalAddress() : MachineAddress(context_.loop);
}

std::string EventSocket::RemoteAddress() const {
  return connection_ ? connection_->RemoteAddress() : std::string();
}

std::uint16_t EventSocket::LocalPort() const { return listener_ ? listener_->Port() : 0; }

void EventSocket::Carry(std::shared_ptr<Connection> connection) {
  connection_ = std::move(connection);
  stateChanges_.WakeAll();
}

void EventSocket::OnConnected(platform::StreamSocket socket) {
  connector_.reset();
  Carry(Connection::Adopt(context_, std::move(socket), *this, {protocol_, index_}));
  events_.OnConnect(index_);
  connection_->StartReading();
}

void EventSocket::OnConnectFailure() {
  connector_.reset();
  failed_ = true;
  stateChanges_.WakeAll();
  events_.OnError(index_);
}

Task<> EventSocket::OnArrival(std::shared_ptr<Connection> connection) {
  return events_.OnDataArrival(index_, std::move(connection));
}

void EventSocket::OnPeerClose() {
  stateChanges_.WakeAll();
  events_.OnClose(index_);
}

void EventSocket::OnBreak() {
  stateChanges_.WakeAll();
  events_.OnError(index_);
}

void EventSocket::OnEnd() { stateChanges_.WakeAll(); }

}  // namespace net
