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

// For what the system takes of a file in one call, a fraction of a millisecond.
constexpr std::uint64_t kPieceBytes = 256 * 1024;

// So much of a file is copied sooner than the system is set up to send it.
constexpr std::uint64_t kCopiedBytes = 16 * 1024;

// One for all sockets: nothing runs between a read and the copy out of it.
std::array<char, 65536>& ReadBuffer() {
  static std::array<char, 65536> buffer;
  return buffer;
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
  std::array<char, 65536>& buffer = ReadBuffer();
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

FileResult BufferedSocket::SendPiece(const platform::File& file, std::uint64_t offset,
                                     std::uint64_t size, Departure departure, std::size_t& count) {
  if (copiesFiles_ || size <= kCopiedBytes) return CopyPiece(file, offset, size, departure, count);
  const auto wanted = static_cast<std::size_t>(std::min(size, kPieceBytes));
  const FileResult result = socket_.SendFile(file, offset, wanted, count);
  if (result == FileResult::kTaken && count < wanted) return FileResult::kWouldWait;
  if (result != FileResult::kNotPossible) return result;
  copiesFiles_ = true;
  return CopyPiece(file, offset, size, departure, count);
}

FileResult BufferedSocket::CopyPiece(const platform::File& file, std::uint64_t offset,
                                     std::uint64_t size, Departure departure, std::size_t& count) {
  std::array<char, 65536>& buffer = ReadBuffer();
  const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, buffer.size()));
  std::error_code error;
  count = file.ReadAt(offset, buffer.data(), wanted, error);
  if (error) count = 0;
  if (count == 0) return FileResult::kFileEnded;
  const Departure ofThese = count == size ? departure : Departure::kAtOnce;
  return Send({buffer.data(), count}, ofThese) ? FileResult::kTaken : FileResult::kBroken;
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
  sentWaiters_.WakeAll();
}

}  // namespace net
