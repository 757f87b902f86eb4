#include "platform/stream_socket.h"

#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace platform {
namespace {

int Descriptor(NativeSocket socket) { return static_cast<int>(socket); }

SocketResult Failure() {
  const bool would = errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
  return would ? SocketResult::kWouldWait : SocketResult::kBroken;
}

FileResult FileFailure() {
  switch (errno) {
    case EAGAIN:
    case EINTR:
      return FileResult::kWouldWait;
    case EIO:
      return FileResult::kFileEnded;
    case EINVAL:
    case ENOSYS:
      return FileResult::kNotPossible;  // not from this file system
    default:
      return FileResult::kBroken;
  }
}

SocketResult ReceiveWith(NativeSocket socket, char* buffer, std::size_t size, int flags,
                         std::size_t& count) {
  const ssize_t received = recv(Descriptor(socket), buffer, size, flags | MSG_DONTWAIT);
  count = received > 0 ? static_cast<std::size_t>(received) : 0;
  if (received < 0) return Failure();
  return received == 0 ? SocketResult::kPeerShut : SocketResult::kDone;
}

}  // namespace

const bool StreamSocket::kSendsFiles = true;

StreamSocket::StreamSocket(Library socket)
    : library_(std::move(socket)), native_(static_cast<NativeSocket>(library_.native_handle())) {
  asio::error_code ignored;
  peer_ = library_.remote_endpoint(ignored).address();
}

StreamSocket::StreamSocket(const asio::any_io_executor& executor, NativeSocket socket,
                           asio::ip::address_v4 peer)
    : library_(executor), native_(socket), peer_(peer) {}

StreamSocket::StreamSocket(StreamSocket&& other) noexcept
    : library_(std::move(other.library_)),
      native_(other.native_),
      peer_(std::move(other.peer_)),
      isOpen_(std::exchange(other.isOpen_, false)) {}

StreamSocket::Library& StreamSocket::Known() {
  asio::error_code ignored;
  if (isOpen_ && !library_.is_open()) {
    library_.assign(asio::ip::tcp::v4(), Descriptor(native_), ignored);
  }
  return library_;
}

SocketResult StreamSocket::Receive(char* buffer, std::size_t size, std::size_t& count) {
  return ReceiveWith(native_, buffer, size, 0, count);
}

SocketResult StreamSocket::Peek() {
  char first = 0;
  std::size_t count = 0;
  return ReceiveWith(native_, &first, 1, MSG_PEEK, count);
}

std::size_t StreamSocket::PendingBytes() {
  int bytes = 0;
  if (ioctl(Descriptor(native_), FIONREAD, &bytes) != 0) return 0;
  return static_cast<std::size_t>(bytes);
}

SocketResult StreamSocket::Send(std::string_view bytes, Departure departure, std::size_t& count) {
  const int more = departure == Departure::kWithEnd ? MSG_MORE : 0;
  const ssize_t sent =
      send(Descriptor(native_), bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL | more);
  count = sent > 0 ? static_cast<std::size_t>(sent) : 0;
  return sent < 0 ? Failure() : SocketResult::kDone;
}

// Accepted sockets and those that the library has connected do not block, which this relies on.
FileResult StreamSocket::SendFile(const File& file, std::uint64_t offset, std::size_t size,
                                  std::size_t& count) {
  // Unlike send, this has no flag against the signal about a peer that has gone.
  static const auto before = std::signal(SIGPIPE, SIG_IGN);
  static_cast<void>(before);
  auto position = static_cast<off_t>(offset);
  const ssize_t sent =
      sendfile(Descriptor(native_), static_cast<int>(file.Native()), &position, size);
  count = sent > 0 ? static_cast<std::size_t>(sent) : 0;
  if (sent < 0) return FileFailure();
  return sent == 0 ? FileResult::kFileEnded : FileResult::kTaken;
}

void StreamSocket::ShutSending() { shutdown(Descriptor(native_), SHUT_WR); }

void StreamSocket::Close() {
  if (!std::exchange(isOpen_, false)) return;
  asio::error_code ignored;
  if (library_.is_open()) {
    library_.close(ignored);
  } else {
    close(Descriptor(native_));
  }
}

}  // namespace platform
