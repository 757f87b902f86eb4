#include "net/buffered_socket.h"

#include <algorithm>
#include <array>
#include <asio/buffer.hpp>
#include <asio/socket_base.hpp>
#include <asio/write.hpp>
#include <utility>

namespace net {

using platform::Departure;
using platform::FileResult;
using platform::SocketResult;

namespace {

// What is sent of a file at a time, within a fraction of a millisecond.
constexpr std::size_t kPieceBytes = std::size_t{256} * 1024;

// What the system is handed of a file at a time. More is twice as slow to a peer on this machine:
// it no longer fits in one segment, and has left the processor's cache by the time it is read.
constexpr std::size_t kHandedOverBytes = std::size_t{48} * 1024;

// A file that is no larger, or the end of one, is copied into the outbox if need be.
constexpr std::uint64_t kShortBytes = std::uint64_t{16} * 1024;

// At a time, where the system does not send files itself; a slow peer keeps that much waiting. In
// smaller pieces the way round the window's events takes longer than to send them.
constexpr std::size_t kOutboxBytes = kPieceBytes;

// One for all sockets: nothing runs between a read and the use of what was read.
using Buffer = std::array<char, kPieceBytes>;
Buffer& ReadBuffer() {
  static Buffer buffer;
  return buffer;
}

using FileRest = BufferedSocket::FileRest;

std::size_t SizeOfPiece(const FileRest& rest, std::size_t most) {
  return static_cast<std::size_t>(std::min<std::uint64_t>(rest.size, most));
}

// Empty if the file has ended or cannot be read.
std::string_view ReadPiece(const FileRest& rest, std::size_t most) {
  Buffer& buffer = ReadBuffer();
  std::error_code error;
  const std::size_t wanted = SizeOfPiece(rest, most);
  const std::size_t count = rest.file.ReadAt(rest.offset, buffer.data(), wanted, error);
  return {buffer.data(), error ? 0 : count};
}

Departure DepartureOf(std::string_view piece, const FileRest& rest) {
  return piece.size() == rest.size ? rest.departure : Departure::kAtOnce;
}

}  // namespace

// Where there is no memory for what has happened, the connection cannot go on.
template <class Step>
void BufferedSocket::Report(const Step& step) {
  const std::shared_ptr<BufferedSocket> self = shared_from_this();
  try {
    step();
  } catch (...) {
    context_.reportError(DescriptionOf(std::current_exception()));
    if (const auto user = user_.lock()) user->OnFailure();
  }
}

// Receiving

SocketResult BufferedSocket::Receive(std::string& arrived) {
  Buffer& buffer = ReadBuffer();
  std::size_t count = 0;
  const SocketResult result = socket_.Receive(buffer.data(), buffer.size(), count);
  if (result != SocketResult::kDone) return result;
  arrived.append(buffer.data(), count);
  if (count < buffer.size()) return result;

  const std::size_t rest = socket_.PendingBytes();
  const std::size_t before = arrived.size();
  std::size_t more = 0;
  arrived.resize(before + rest);
  if (rest > 0) socket_.Receive(arrived.data() + before, rest, more);
  arrived.resize(before + more);
  return result;
}

SocketResult BufferedSocket::ReceiveInPlace(std::string_view& arrived) {
  Buffer& buffer = ReadBuffer();
  std::size_t count = 0;
  const SocketResult result = socket_.Receive(buffer.data(), buffer.size(), count);
  arrived = {buffer.data(), count};
  return result;
}

SocketResult BufferedSocket::Discard() {
  std::size_t count = 0;
  return socket_.Receive(ReadBuffer().data(), ReadBuffer().size(), count);
}

void BufferedSocket::AwaitReadable() {
  if (std::exchange(awaitingReadable_, true)) return;
  socket_.Known().async_wait(asio::socket_base::wait_read,
                             [self = shared_from_this()](const asio::error_code& error) {
                               self->awaitingReadable_ = false;
                               self->OnWaited(error);
                             });
}

// A completion that was queued when the socket was closed still arrives, perhaps after the service
// has gone. A reset may show here and nowhere else: reading would then find an orderly end.
void BufferedSocket::OnWaited(const asio::error_code& error) {
  if (!socket_.IsOpen() || error == asio::error::operation_aborted) return;
  if (!error) return ReportReadable();
  Report([this] {
    if (const auto user = user_.lock()) user->OnFailure();
  });
}

void BufferedSocket::ReportReadable() {
  Report([this] {
    if (const auto user = user_.lock()) user->OnReadable();
  });
}

// Sending

bool BufferedSocket::Send(std::string_view bytes, Departure departure) {
  if (HasUnsentBytes()) {
    waiting_.append(bytes);
    return true;
  }
  std::size_t sent = 0;
  const SocketResult result = socket_.Send(bytes, departure, sent);
  if (result != SocketResult::kDone && result != SocketResult::kWouldWait) return false;
  if (sent == bytes.size()) return true;
  inFlight_ = bytes.substr(sent);
  SendInFlight();
  return true;
}

void BufferedSocket::SendInFlight() {
  asio::async_write(socket_.Known(), asio::buffer(inFlight_),
                    [self = shared_from_this()](const asio::error_code& error, std::size_t) {
                      if (!self->socket_.IsOpen()) return;
                      self->Report([&] { self->OnTaken(error); });
                    });
}

void BufferedSocket::OnTaken(const asio::error_code& error) {
  const auto user = user_.lock();
  if (error) {
    inFlight_.clear();
    waiting_.clear();
    if (user && error != asio::error::operation_aborted) user->OnFailure();
    return;
  }
  inFlight_ = std::exchange(waiting_, {});
  if (HasUnsentBytes()) return SendInFlight();
  sentWaiters_.WakeAll();
  if (user) user->OnSent();
}

Task<> BufferedSocket::Sent() {
  while (HasUnsentBytes()) {
    WaitList::Awaiter taken = sentWaiters_.Wait();
    co_await taken;
  }
}

// Files

FileResult BufferedSocket::SendPiece(const FileRest& rest, std::size_t& count) {
  if (copiesFiles_ || rest.size <= kShortBytes) return CopyToOutbox(rest, count);
  const FileResult result = HandOver(rest, count);
  if (result != FileResult::kNotPossible) return result;
  copiesFiles_ = true;
  return CopyToOutbox(rest, count);
}

FileResult BufferedSocket::HandOver(const FileRest& rest, std::size_t& count) {
  const std::size_t wanted = SizeOfPiece(rest, kHandedOverBytes);
  const FileResult result = socket_.SendFile(rest.file, rest.offset, wanted, count);
  return result == FileResult::kTaken && count < wanted ? FileResult::kWouldWait : result;
}

FileResult BufferedSocket::CopyToOutbox(const FileRest& rest, std::size_t& count) {
  const std::string_view piece = ReadPiece(rest, kOutboxBytes);
  count = piece.size();
  if (piece.empty()) return FileResult::kFileEnded;
  return Send(piece, DepartureOf(piece, rest)) ? FileResult::kTaken : FileResult::kBroken;
}

Task<> BufferedSocket::Writable() {
  if (!std::exchange(awaitingWritable_, true)) {
    socket_.Known().async_wait(
        asio::socket_base::wait_write,
        [self = shared_from_this()](const asio::error_code& error) { self->OnWritable(error); });
  }
  WaitList::Awaiter taken = sentWaiters_.Wait();
  co_await taken;
}

void BufferedSocket::OnWritable(const asio::error_code& error) {
  awaitingWritable_ = false;
  if (!socket_.IsOpen() || error == asio::error::operation_aborted) return;
  Report([this] { sentWaiters_.WakeAll(); });
}

}  // namespace net
