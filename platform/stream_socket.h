#pragma once

// A connected TCP socket at the level of the system, for what never waits. Waiting is the I/O
// library's business (net/connection.h), and a connection that is answered at once never gets that
// far: on Linux it is spared the calls that make a socket known there.

#include <asio/any_io_executor.hpp>
#include <asio/ip/tcp.hpp>
#include <cstddef>
#include <string_view>

#include "platform/socket_options.h"

namespace platform {

/// What became of a call that does not wait.
enum class SocketResult { kDone, kWouldWait, kPeerShut, kBroken };

/// When sent bytes leave. With the end: together with a ShutSending that follows shortly, in one
/// segment instead of two, where the system can.
enum class Departure { kAtOnce, kWithEnd };

class StreamSocket {
 public:
  using Library = asio::ip::tcp::socket;

  /// Takes over a socket that the I/O library knows already.
  explicit StreamSocket(Library socket);

  /// Takes over an accepted one that it does not know.
  StreamSocket(const asio::any_io_executor& executor, NativeSocket socket,
               asio::ip::address_v4 peer);

  StreamSocket(StreamSocket&& other) noexcept;
  StreamSocket& operator=(StreamSocket&&) = delete;
  ~StreamSocket() { Close(); }

  bool IsOpen() const { return isOpen_; }
  NativeSocket Native() const { return native_; }

  /// Of whom it was connected to, also when he has gone since.
  asio::ip::address Peer() const { return peer_; }

  /// The socket as the I/O library knows it, for waiting and for asking; made known at the first
  /// call.
  Library& Known();
  bool IsKnown() const { return library_.is_open(); }

  /// `count`: the bytes read into `buffer`.
  SocketResult Receive(char* buffer, std::size_t size, std::size_t& count);

  /// Whether anything could be received, without taking it.
  SocketResult Peek();

  /// The bytes that could be received at once.
  std::size_t PendingBytes();

  /// `count`: the bytes that the system took. What it did not take has to wait.
  SocketResult Send(std::string_view bytes, Departure departure, std::size_t& count);

  void ShutSending();
  void Close();

 private:
  Library library_;
  NativeSocket native_;
  asio::ip::address peer_;
  bool isOpen_ = true;
};

}  // namespace platform
