#include "net/connection.h"

#include <asio/ip/tcp.hpp>
#include <new>
#include <utility>

#include "net/draining_connections.h"
#include "platform/socket_options.h"
#include "text/printable_text.h"

namespace net {

using platform::FileResult;
using platform::SocketResult;

namespace {

// Of a report's texts, in bytes. No system knows a longer path.
constexpr std::size_t kLongestText = 260;
constexpr std::size_t kLongestPath = 4096;

// An activity that begins, with texts that may be kept.
Activity Bounded(Activity activity) {
  activity.what = text::Printable(activity.what, kLongestText);
  if (activity.path.size() > kLongestPath) activity.path = {};
  activity.began = std::chrono::system_clock::now();
  return activity;
}

}  // namespace

std::shared_ptr<Connection> Connection::Adopt(SocketContext& context, platform::StreamSocket socket,
                                              Owner& owner, Place place) {
  auto connection = std::make_shared<Connection>(context, std::move(socket), owner, place);
  const std::shared_ptr<BufferedSocket::User> user(connection, connection.get());
  connection->socket_->SetUser(user);
  return connection;
}

Connection::Connection(SocketContext& context, platform::StreamSocket socket, Owner& owner,
                       Place place)
    : context_(context),
      owner_(owner),
      place_(place),
      socket_(std::make_shared<BufferedSocket>(context, std::move(socket))),
      handlers_(std::make_shared<HandlerScope>(context.loop, context.reportError)),
      peerLook_(context.loop) {
  handlers_->OnHandlerEnd([this] { OnHandlerEnd(); });
}

bool Connection::IsOpen() const {
  return state_ == SocketState::kConnected || state_ == SocketState::kClosing;
}

std::string Connection::LocalAddress() {
  if (!localAddress_.empty()) return localAddress_;
  asio::error_code error;
  const asio::ip::tcp::endpoint endpoint = socket_->Socket().Known().local_endpoint(error);
  if (!error) localAddress_ = endpoint.address().to_string();
  return localAddress_;
}

std::string Connection::RemoteAddress() const { return socket_->Socket().Peer().to_string(); }

// Reports

void Connection::Doing(std::string_view command) {
  Finish(ActivityEnd::kComplete);
  activity_ = {.what = text::Printable(command, kLongestText),
               .began = std::chrono::system_clock::now()};
}

void Connection::Begin(Activity activity) {
  Finish(ActivityEnd::kComplete);
  activity_ = Bounded(std::move(activity));
  isEndUntold_ = true;
}

void Connection::Describe(std::string_view detail) {
  activity_.detail = text::Printable(detail, kLongestText);
}

void Connection::Finish(ActivityEnd end) {
  if (std::exchange(isEndUntold_, false)) Report(activity_, end);
}

void Connection::Tell(Activity activity, ActivityEnd end) {
  Report(Bounded(std::move(activity)), end);
}

// Runs in the middle of a close, which must not fail for it. A connection that has ended may have
// lost its service.
void Connection::Report(const Activity& activity, ActivityEnd end) {
  if (!IsOpen() || !IsObserved()) return;
  try {
    context_.observer->OnActivityEnded({std::string(place_.protocol), place_.slot, RemoteAddress(),
                                        activity, std::chrono::system_clock::now(), end});
  } catch (const std::bad_alloc&) {
    // Then it is not told.
  }
}

void Connection::CountReceived(std::size_t bytes) {
  activity_.traffic.received += bytes;
  context_.traffic.received += bytes;
  bytes_ += bytes;
}

void Connection::CountSent(std::size_t bytes) {
  activity_.traffic.sent += bytes;
  context_.traffic.sent += bytes;
  bytes_ += bytes;
}

// Reading

void Connection::StartReading() {
  readingStarted_ = true;
  if (!MayRead()) return;
  // A client's first bytes are often there already. If they are held back, all may be over soon.
  if (readingHeld_) return ContinueReadingAfter(kPassesBeforeReading);
  socket_->ReportReadable();
}

// Holding asks for nothing: a handler of an arrival that does so may be over before the system has
// to be asked.
void Connection::HoldReading(bool hold) {
  readingHeld_ = hold;
  if (!hold) ContinueReading();
}

std::string Connection::GetData() { return std::exchange(arrived_, {}); }

bool Connection::MayRead() const {
  return readingStarted_ && state_ == SocketState::kConnected && !IsFullOfHandlers();
}

bool Connection::IsFullOfHandlers() const { return handlers_->HandlerCount() >= kMostHandlers; }

void Connection::ContinueReading() {
  if (MayRead()) socket_->AwaitReadable();
  if (IsFullOfHandlers() && !peerLook_.IsRunning()) WatchPeer();
}

// An answer that is out within a few passes of the loop saves asking for more in between. A
// connection that has ended meanwhile may have lost its service.
void Connection::ContinueReadingAfter(int passes) {
  if (!MayRead()) return;
  context_.loop.Post([self = shared_from_this(), passes] {
    if (passes == 0) return self->ContinueReading();
    self->ContinueReadingAfter(passes - 1);
  });
}

// A peer that goes away behind bytes that are not read would otherwise keep its slot for good.
void Connection::WatchPeer() {
  peerLook_.Start(kPeerLook, [this] {
    const std::shared_ptr<Connection> self = shared_from_this();
    if (state_ != SocketState::kConnected || !IsFullOfHandlers()) return;
    if (platform::HasPeerShut(socket_->Socket().Native())) return OnPeerShut();
    WatchPeer();
  });
}

void Connection::OnReadable() {
  if (!MayRead()) return;
  switch (readingHeld_ ? socket_->Socket().Peek() : ReadPending()) {
    case SocketResult::kDone:
      // Held back, the bytes stay where they are, and asking again would only find them again.
      if (!readingHeld_) TakeArrival();
      return;
    case SocketResult::kWouldWait:
      return ContinueReading();
    case SocketResult::kPeerShut:
      return OnPeerShut();
    case SocketResult::kBroken:
      return Break();
  }
}

void Connection::TakeArrival() {
  const std::shared_ptr<Connection> self = shared_from_this();
  handlers_->Start(owner_.OnArrival(self));
  bulk_ = {};
  // Nothing is saved where the socket is known already.
  if (socket_->Socket().IsKnown()) return ContinueReading();
  ContinueReadingAfter(kPassesBeforeReading);
}

// More may come in meanwhile, and is the next arrival.
SocketResult Connection::ReadPending() {
  if (receivesInBulk_) {
    const SocketResult result = socket_->ReceiveInPlace(bulk_);
    CountReceived(bulk_.size());
    return result;
  }
  const std::size_t before = arrived_.size();
  const SocketResult result = socket_->Receive(arrived_);
  CountReceived(arrived_.size() - before);
  return result;
}

void Connection::OnPeerShut() {
  state_ = SocketState::kClosing;
  owner_.OnPeerClose();
}

// Sending

void Connection::SendData(std::string_view bytes, platform::Departure departure) {
  if (!IsOpen()) return;
  CountSent(bytes.size());
  if (!socket_->Send(bytes, departure)) BreakSoon();
}

// An event of its own: the sending handler goes on undisturbed to its next await.
void Connection::BreakSoon() {
  context_.loop.Post([self = shared_from_this()] { self->Break(); });
}

Task<bool> Connection::SendFile(const platform::File& file, std::uint64_t offset,
                                std::uint64_t size, platform::Departure departure) {
  const std::shared_ptr<Connection> self = shared_from_this();
  BufferedSocket::FileRest rest = {file, offset, size, departure};
  // The others get their turn between two pieces, however fast this peer reads.
  while (rest.size > 0 && IsOpen()) {
    if (HasUnsentBytes()) {
      Task<> earlier = Sent();
      co_await earlier;
      continue;
    }
    std::size_t count = 0;
    const FileResult result = socket_->SendPiece(rest, count);
    CountSent(count);
    rest.offset += count;
    rest.size -= count;
    if (result == FileResult::kFileEnded) co_return false;
    if (result == FileResult::kBroken) BreakSoon();
    if (result == FileResult::kWouldWait) {
      Task<> room = socket_->Writable();
      co_await room;
    } else if (rest.size > 0) {
      co_await YieldToEvents();
    }
  }
  if (!HasUnsentBytes()) co_return true;
  Task<> sent = Sent();
  co_await sent;
  co_return true;
}

// Ending

void Connection::EndHandlers(SocketState state) {
  state_ = state;
  arrived_.clear();
  peerLook_.Stop();
  handlers_->End();
  socket_->WakeSenders();
}

void Connection::Close(ActivityEnd end) {
  if (!IsOpen()) {
    state_ = SocketState::kClosed;
    return;
  }
  const std::shared_ptr<Connection> self = shared_from_this();
  Finish(end);
  const bool peerShut = state_ == SocketState::kClosing;
  EndHandlers(SocketState::kClosed);
  owner_.OnEnd();
  context_.draining.Drain(socket_, peerShut);
}

void Connection::CloseWhenHandlersEnd() {
  closesWithLastHandler_ = true;
  if (handlers_->HandlerCount() == 0) Close(ActivityEnd::kClientLeft);
}

void Connection::OnHandlerEnd() {
  if (closesWithLastHandler_ && handlers_->HandlerCount() == 0) {
    return Close(ActivityEnd::kClientLeft);
  }
  ContinueReading();
}

void Connection::Break() {
  if (!IsOpen()) return;
  const std::shared_ptr<Connection> self = shared_from_this();
  Finish(ActivityEnd::kClientLeft);
  EndHandlers(SocketState::kError);
  socket_->Socket().Close();
  owner_.OnBreak();
}

}  // namespace net
