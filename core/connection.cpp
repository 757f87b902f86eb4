#include "core/connection.h"

#include <array>
#include <asio/buffer.hpp>
#include <asio/socket_base.hpp>
#include <asio/write.hpp>
#include <utility>

#include "core/draining_connections.h"
#include "platform/socket_options.h"

namespace core {
namespace {

// One for all connections: nothing runs between a read and the copy out of it.
std::array<char, 65536>& ReadBuffer() {
  static std::array<char, 65536> buffer;
  return buffer;
}

std::string AddressText(const asio::ip::tcp::endpoint& endpoint, const asio::error_code& error) {
  return error ? std::string() : endpoint.address().to_string();
}

}  // namespace

std::shared_ptr<Connection> Connection::Adopt(SocketContext& context, Socket socket,
                                              ConnectionOwner& owner) {
  return std::make_shared<Connection>(context, std::move(socket), owner);
}

Connection::Connection(SocketContext& context, Socket socket, ConnectionOwner& owner)
    : context_(context),
      socket_(std::move(socket)),
      owner_(&owner),
      handlers_(std::make_shared<HandlerScope>(context.loop, context.reportError)),
      peerLook_(context.loop) {
  asio::error_code ignored;
  socket_.non_blocking(true, ignored);
  handlers_->OnHandlerEnd([this] {
    if (closeWhenIdle_ && handlers_->HandlerCount() == 0) {
      Close();
    } else {
      ContinueReading();
    }
  });
}

std::string Connection::LocalAddress() const {
  asio::error_code error;
  return AddressText(socket_.local_endpoint(error), error);
}

std::string Connection::RemoteAddress() const {
  asio::error_code error;
  return AddressText(socket_.remote_endpoint(error), error);
}

// Reading

void Connection::StartReading() {
  reading_ = true;
  // A client's first bytes are often there already.
  if (MayRead()) OnReadable();
}

void Connection::HoldReading(bool hold) {
  held_ = hold;
  ContinueReading();
}

std::string Connection::GetData() { return std::exchange(arrived_, {}); }

bool Connection::MayRead() const {
  return reading_ && state_ == SocketState::kConnected && !IsFullOfHandlers();
}

bool Connection::IsFullOfHandlers() const { return handlers_->HandlerCount() >= kMostHandlers; }

void Connection::ContinueReading() {
  if (MayRead() && !awaiting_) AwaitReadable();
  if (IsFullOfHandlers() && !peerLook_.IsRunning()) WatchPeer();
}

// A peer that goes away behind bytes that are not read would otherwise keep its slot for good.
void Connection::WatchPeer() {
  peerLook_.Start(kPeerLook, [this] {
    const std::shared_ptr<Connection> self = shared_from_this();
    if (state_ != SocketState::kConnected || !IsFullOfHandlers()) return;
    const auto socket = static_cast<platform::NativeSocket>(socket_.native_handle());
    platform::HasPeerShut(socket) ? OnPeerShut() : WatchPeer();
  });
}

void Connection::AwaitReadable() {
  awaiting_ = true;
  socket_.async_wait(Socket::wait_read, [self = shared_from_this()](const asio::error_code& error) {
    self->awaiting_ = false;
    if (error == asio::error::operation_aborted) return;
    error ? self->OnWaitFailure() : self->OnReadable();
  });
}

void Connection::OnReadable() {
  if (draining_) return DiscardArrivals();
  if (!MayRead()) return;
  switch (held_ ? PeekPending() : ReadPending()) {
    case ReadResult::kData:
      // Held back, the bytes stay where they are, and asking again would only find them again.
      return held_ ? void() : TakeArrival();
    case ReadResult::kNothingYet:
      return ContinueReading();
    case ReadResult::kPeerClosed:
      return OnPeerShut();
    case ReadResult::kBroken:
      return Break();
  }
}

// A reset may be told here and nowhere else: reading would then find an orderly end.
void Connection::OnWaitFailure() { draining_ ? Abandon() : Break(); }

void Connection::TakeArrival() {
  const std::shared_ptr<Connection> self = shared_from_this();
  handlers_->Start(owner_->OnArrival(self));
  ContinueReading();
}

// Everything that is pending at this moment; more may come in meanwhile, and is the next arrival.
Connection::ReadResult Connection::ReadPending() {
  std::array<char, 65536>& buffer = ReadBuffer();
  asio::error_code error;
  const std::size_t count = socket_.receive(asio::buffer(buffer), 0, error);
  if (error == asio::error::would_block || error == asio::error::try_again) {
    return ReadResult::kNothingYet;
  }
  if (error == asio::error::eof) return ReadResult::kPeerClosed;
  if (error) return ReadResult::kBroken;
  arrived_.append(buffer.data(), count);
  if (count < buffer.size()) return ReadResult::kData;

  const std::size_t rest = socket_.available(error);
  const std::size_t before = arrived_.size();
  arrived_.resize(before + rest);
  const std::size_t more =
      rest == 0 ? 0 : socket_.receive(asio::buffer(arrived_.data() + before, rest), 0, error);
  arrived_.resize(before + more);
  return ReadResult::kData;
}

Connection::ReadResult Connection::PeekPending() {
  asio::error_code error;
  char first = 0;
  socket_.receive(asio::buffer(&first, 1), asio::socket_base::message_peek, error);
  if (!error) return ReadResult::kData;
  if (error == asio::error::would_block || error == asio::error::try_again) {
    return ReadResult::kNothingYet;
  }
  return error == asio::error::eof ? ReadResult::kPeerClosed : ReadResult::kBroken;
}

void Connection::OnPeerShut() {
  peerShut_ = true;
  state_ = SocketState::kClosing;
  owner_->OnPeerClose();
}

// Sending

void Connection::SendData(std::string_view bytes) {
  if (state_ != SocketState::kConnected && state_ != SocketState::kClosing) return;
  if (!outbox_.IsEmpty()) {
    outbox_.waiting.append(bytes);
    return;
  }
  asio::error_code error;
  const std::size_t sent = socket_.send(asio::buffer(bytes), 0, error);
  if (error && error != asio::error::would_block && error != asio::error::try_again) {
    // An event of its own: whoever is sending goes on undisturbed to his next await.
    context_.loop.Post([self = shared_from_this()] { self->Break(); });
    return;
  }
  if (sent == bytes.size()) return;
  outbox_.inFlight = bytes.substr(sent);
  SendRest();
}

void Connection::SendRest() {
  asio::async_write(socket_, asio::buffer(outbox_.inFlight),
                    [self = shared_from_this()](const asio::error_code& error, std::size_t) {
                      self->OnTaken(error);
                    });
}

void Connection::OnTaken(const asio::error_code& error) {
  if (error) {
    outbox_ = {};
    if (error == asio::error::operation_aborted) return;
    return draining_ ? Abandon() : Break();
  }
  outbox_.inFlight = std::exchange(outbox_.waiting, {});
  if (!outbox_.IsEmpty()) return SendRest();
  sentWaiters_.WakeAll();
  if (draining_) ShutWhenSent();
}

Task<> Connection::Sent() {
  while (!outbox_.IsEmpty()) {
    WaitList::Awaiter taken = sentWaiters_.Wait();
    co_await taken;
  }
}

// Ending

void Connection::EndHandlers(SocketState state) {
  state_ = state;
  arrived_.clear();
  peerLook_.Stop();
  handlers_->End();
  sentWaiters_.WakeAll();
}

void Connection::Close() {
  const bool wasOpen = state_ == SocketState::kConnected || state_ == SocketState::kClosing;
  if (!wasOpen) {
    state_ = SocketState::kClosed;
    return;
  }
  const std::shared_ptr<Connection> self = shared_from_this();
  EndHandlers(SocketState::kClosed);
  owner_->OnEnd();
  draining_ = true;
  context_.draining.Add(self);
  ShutWhenSent();
  if (!peerShut_ && !awaiting_) AwaitReadable();
}

void Connection::CloseWhenHandlersEnd() {
  closeWhenIdle_ = true;
  if (handlers_->HandlerCount() == 0) Close();
}

void Connection::Reset() {
  const std::shared_ptr<Connection> self = shared_from_this();
  if (!draining_) {
    EndHandlers(SocketState::kClosed);
    owner_->OnEnd();
  }
  asio::error_code ignored;
  socket_.set_option(asio::socket_base::linger(true, 0), ignored);
  socket_.close(ignored);
}

void Connection::Break() {
  if (state_ != SocketState::kConnected && state_ != SocketState::kClosing) return;
  const std::shared_ptr<Connection> self = shared_from_this();
  EndHandlers(SocketState::kError);
  asio::error_code ignored;
  socket_.close(ignored);
  owner_->OnBreak();
}

// Draining

std::size_t Connection::UnsentBytes() const {
  return outbox_.inFlight.size() + outbox_.waiting.size() +
         platform::UnconfirmedBytes(static_cast<platform::NativeSocket>(socket_.native_handle()));
}

void Connection::ShutWhenSent() {
  if (!outbox_.IsEmpty()) return;
  if (peerShut_) return Abandon();
  asio::error_code ignored;
  socket_.shutdown(Socket::shutdown_send, ignored);
}

void Connection::DiscardArrivals() {
  constexpr int kMostReads = 16;  // then others get their turn
  asio::error_code error;
  for (int i = 0; i < kMostReads && !error; ++i) {
    socket_.receive(asio::buffer(ReadBuffer()), 0, error);
  }
  if (!error || error == asio::error::would_block || error == asio::error::try_again) {
    return AwaitReadable();
  }
  peerShut_ = true;
  if (error != asio::error::eof || outbox_.IsEmpty()) Abandon();
}

void Connection::Abandon() {
  const std::shared_ptr<Connection> self = shared_from_this();
  asio::error_code ignored;
  socket_.close(ignored);
  context_.draining.Remove(*this);
}

}  // namespace core
