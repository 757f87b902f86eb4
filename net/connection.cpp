#include "net/connection.h"

#include <array>
#include <asio/buffer.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/socket_base.hpp>
#include <asio/write.hpp>
#include <utility>

#include "net/draining_connections.h"
#include "platform/socket_options.h"
#include "text/printable_text.h"

namespace net {

using platform::SocketResult;

namespace {

// One for all connections: nothing runs between a read and the copy out of it.
std::array<char, 65536>& ReadBuffer() {
  static std::array<char, 65536> buffer;
  return buffer;
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
  handlers_->OnHandlerEnd([this] {
    if (closeWhenIdle_ && handlers_->HandlerCount() == 0) {
      Close();
    } else {
      ContinueReading();
    }
  });
}

std::string Connection::LocalAddress() {
  asio::error_code error;
  const asio::ip::tcp::endpoint endpoint = socket_.Known().local_endpoint(error);
  return error ? std::string() : endpoint.address().to_string();
}

std::string Connection::RemoteAddress() const { return socket_.Peer().to_string(); }

// Where there is no memory for what has arrived, the connection cannot go on.
template <class Step>
void Connection::BreakIfItThrows(const Step& step) {
  try {
    step();
  } catch (...) {
    context_.reportError(DescriptionOf(std::current_exception()));
    OnWaitFailure();
  }
}

// Watching

void Connection::Doing(std::string_view what) {
  constexpr std::size_t kMost = 260;
  activity_ = {text::Printable(what, kMost), 0, {}};
}

void Connection::CountReceived(std::size_t bytes) {
  activity_.traffic.received += bytes;
  context_.traffic.received += bytes;
}

void Connection::CountSent(std::size_t bytes) {
  activity_.traffic.sent += bytes;
  context_.traffic.sent += bytes;
}

// Reading

void Connection::StartReading() {
  reading_ = true;
  // A client's first bytes are often there already.
  if (MayRead()) BreakIfItThrows([this] { OnReadable(); });
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

// An answer that is out within a few passes of the loop spares us asking for more in between. A
// connection that has ended meanwhile may have lost its service.
void Connection::ContinueReadingAfter(int passes) {
  if (!MayRead()) return;
  context_.loop.Post([self = shared_from_this(), passes] {
    passes > 0 ? self->ContinueReadingAfter(passes - 1) : self->ContinueReading();
  });
}

// A peer that goes away behind bytes that are not read would otherwise keep its slot for good.
void Connection::WatchPeer() {
  peerLook_.Start(kPeerLook, [this] {
    const std::shared_ptr<Connection> self = shared_from_this();
    if (state_ != SocketState::kConnected || !IsFullOfHandlers()) return;
    platform::HasPeerShut(socket_.Native()) ? OnPeerShut() : WatchPeer();
  });
}

void Connection::AwaitReadable() {
  awaiting_ = true;
  socket_.Known().async_wait(
      asio::socket_base::wait_read, [self = shared_from_this()](const asio::error_code& error) {
        self->awaiting_ = false;
        // One that was on its way when the socket was closed comes all the
        // same, perhaps after the service has gone.
        if (!self->socket_.IsOpen()) return;
        if (error == asio::error::operation_aborted) return;
        self->BreakIfItThrows([&] { error ? self->OnWaitFailure() : self->OnReadable(); });
      });
}

void Connection::OnReadable() {
  if (draining_) return DiscardArrivals();
  if (!MayRead()) return;
  switch (held_ ? socket_.Peek() : ReadPending()) {
    case SocketResult::kDone:
      // Held back, the bytes stay where they are, and asking again would only find them again.
      return held_ ? void() : TakeArrival();
    case SocketResult::kWouldWait:
      return ContinueReading();
    case SocketResult::kPeerShut:
      return OnPeerShut();
    case SocketResult::kBroken:
      return Break();
  }
}

// A reset may be told here and nowhere else: reading would then find an orderly end.
void Connection::OnWaitFailure() { draining_ ? Abandon() : Break(); }

void Connection::TakeArrival() {
  const std::shared_ptr<Connection> self = shared_from_this();
  handlers_->Start(owner_->OnArrival(self));
  // Nothing is spared where the socket is known already.
  socket_.IsKnown() ? ContinueReading() : ContinueReadingAfter(kPassesBeforeReading);
}

// Everything that is pending at this moment; more may come in meanwhile, and is the next arrival.
SocketResult Connection::ReadPending() {
  std::array<char, 65536>& buffer = ReadBuffer();
  std::size_t count = 0;
  const SocketResult result = socket_.Receive(buffer.data(), buffer.size(), count);
  if (result != SocketResult::kDone) return result;
  arrived_.append(buffer.data(), count);
  CountReceived(count);
  if (count < buffer.size()) return result;

  const std::size_t rest = socket_.PendingBytes();
  const std::size_t before = arrived_.size();
  std::size_t more = 0;
  arrived_.resize(before + rest);
  if (rest > 0) socket_.Receive(arrived_.data() + before, rest, more);
  arrived_.resize(before + more);
  CountReceived(more);
  return SocketResult::kDone;
}

void Connection::OnPeerShut() {
  peerShut_ = true;
  state_ = SocketState::kClosing;
  owner_->OnPeerClose();
}

// Sending

void Connection::SendData(std::string_view bytes, platform::Departure departure) {
  if (state_ != SocketState::kConnected && state_ != SocketState::kClosing) return;
  CountSent(bytes.size());
  if (!outbox_.IsEmpty()) {
    outbox_.waiting.append(bytes);
    return;
  }
  std::size_t sent = 0;
  const SocketResult result = socket_.Send(bytes, departure, sent);
  if (result != SocketResult::kDone && result != SocketResult::kWouldWait) {
    // An event of its own: whoever is sending goes on undisturbed to his next await.
    context_.loop.Post([self = shared_from_this()] { self->Break(); });
    return;
  }
  if (sent == bytes.size()) return;
  outbox_.inFlight = bytes.substr(sent);
  SendRest();
}

void Connection::GatherSends() {
  asio::error_code ignored;
  socket_.Known().set_option(asio::ip::tcp::no_delay(false), ignored);
}

void Connection::SendRest() {
  asio::async_write(socket_.Known(), asio::buffer(outbox_.inFlight),
                    [self = shared_from_this()](const asio::error_code& error, std::size_t) {
                      if (!self->socket_.IsOpen()) return;
                      self->BreakIfItThrows([&] { self->OnTaken(error); });
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
  // The end first: the peer waits for it, and for nothing of what follows.
  ShutWhenSent();
  if (!socket_.IsOpen()) return;
  context_.draining.Add(self);
  if (socket_.IsKnown()) AwaitEnd();
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
  socket_.Known().set_option(asio::socket_base::linger(true, 0), ignored);
  socket_.Close();
}

void Connection::Break() {
  if (state_ != SocketState::kConnected && state_ != SocketState::kClosing) return;
  const std::shared_ptr<Connection> self = shared_from_this();
  EndHandlers(SocketState::kError);
  socket_.Close();
  owner_->OnBreak();
}

// Draining

std::size_t Connection::UnsentBytes() const {
  return WaitingBytes() + platform::UnconfirmedBytes(socket_.Native());
}

void Connection::ShutWhenSent() {
  if (!outbox_.IsEmpty()) return;
  if (peerShut_) return Abandon();
  socket_.ShutSending();
}

void Connection::DiscardArrivals() {
  if (!EndIfPeerShut()) AwaitEnd();
}

// Throws away what has come in. True if the connection is over with it.
bool Connection::EndIfPeerShut() {
  constexpr int kMostReads = 16;  // then others get their turn
  SocketResult result = SocketResult::kDone;
  for (int i = 0; i < kMostReads && result == SocketResult::kDone; ++i) {
    std::size_t count = 0;
    result = socket_.Receive(ReadBuffer().data(), ReadBuffer().size(), count);
  }
  if (result == SocketResult::kDone || result == SocketResult::kWouldWait) return false;
  peerShut_ = true;
  const bool over = result == SocketResult::kBroken || outbox_.IsEmpty();
  if (over) Abandon();
  return over;
}

void Connection::AwaitEnd() {
  if (draining_ && !peerShut_ && !awaiting_ && socket_.IsOpen()) AwaitReadable();
}

void Connection::Abandon() {
  const std::shared_ptr<Connection> self = shared_from_this();
  socket_.Close();
  context_.draining.Remove(*this);
}

}  // namespace net
