#include "platform/stream_socket.h"

#include <utility>

namespace platform {
namespace {

SocketResult ResultOf(const asio::error_code& error) {
  if (!error) return SocketResult::kDone;
  if (error == asio::error::would_block || error == asio::error::try_again) {
    return SocketResult::kWouldWait;
  }
  return error == asio::error::eof ? SocketResult::kPeerShut : SocketResult::kBroken;
}

}  // namespace

const bool StreamSocket::kSendsFiles = false;

StreamSocket::StreamSocket(Library socket)
    : library_(std::move(socket)), native_(static_cast<NativeSocket>(library_.native_handle())) {
  asio::error_code ignored;
  library_.non_blocking(true, ignored);
  peer_ = library_.remote_endpoint(ignored).address();
}

// On Windows every socket is registered from the start, since the library accepts it.
StreamSocket::StreamSocket(const asio::any_io_executor& executor, NativeSocket socket,
                           asio::ip::address_v4 peer)
    : library_(executor), native_(socket), peer_(peer) {
  asio::error_code ignored;
  library_.assign(asio::ip::tcp::v4(), socket, ignored);
  library_.non_blocking(true, ignored);
}

StreamSocket::StreamSocket(StreamSocket&& other) noexcept
    : library_(std::move(other.library_)),
      native_(other.native_),
      peer_(other.peer_),
      isOpen_(std::exchange(other.isOpen_, false)) {}

StreamSocket::Library& StreamSocket::Known() { return library_; }

SocketResult StreamSocket::Receive(char* buffer, std::size_t size, std::size_t& count) {
  asio::error_code error;
  count = library_.receive(asio::buffer(buffer, size), 0, error);
  return ResultOf(error);
}

SocketResult StreamSocket::Peek() {
  asio::error_code error;
  char first = 0;
  library_.receive(asio::buffer(&first, 1), asio::socket_base::message_peek, error);
  return ResultOf(error);
}

std::size_t StreamSocket::PendingBytes() {
  asio::error_code error;
  const std::size_t bytes = library_.available(error);
  return error ? 0 : bytes;
}

SocketResult StreamSocket::Send(std::string_view bytes, Departure, std::size_t& count) {
  asio::error_code error;
  count = library_.send(asio::buffer(bytes), 0, error);
  return ResultOf(error);
}

FileResult StreamSocket::SendFile(const File&, std::uint64_t, std::size_t, std::size_t& count) {
  count = 0;
  return FileResult::kNotPossible;
}

void StreamSocket::ShutSending() {
  asio::error_code ignored;
  library_.shutdown(Library::shutdown_send, ignored);
}

void StreamSocket::Close() {
  if (!std::exchange(isOpen_, false)) return;
  asio::error_code ignored;
  library_.close(ignored);
}

}  // namespace platform
