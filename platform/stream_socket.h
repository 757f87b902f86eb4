#pragma once

// A connected TCP socket for calls that never wait. Waiting is done by the I/O library
// (net/connection.h). A connection that is answered at once never waits, and on Linux it saves the
// calls that register a socket with the library.

#include <asio/any_io_executor.hpp>
#include <asio/ip/tcp.hpp>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/file.h"
#include "platform/socket_options.h"

namespace platform {

/// The result of a call that does not wait.
enum class SocketResult { kDone, kWouldWait, kPeerShut, kBroken };

/// When sent bytes leave. kWithEnd: together with a ShutSending that follows shortly, in one
/// segment instead of two if the system can.
enum class Departure { kAtOnce, kWithEnd };

/// The result of handing part of a file to the system. kFileEnded: the part is beyond the end, or
/// could not be read. kNotPossible: read the file and send what was read.
enum class FileResult { kTaken, kWouldWait, kFileEnded, kNotPossible, kBroken };

class StreamSocket {
 public:
  using Library = asio::ip::tcp::socket;

  /// Whether SendFile is possible on this system.
  static const bool kSendsFiles;

  /// Takes ownership of a socket of the I/O library.
  explicit StreamSocket(Library socket);

  /// Takes ownership of an accepted socket that is not registered with the library.
  StreamSocket(const asio::any_io_executor& executor, NativeSocket socket,
               asio::ip::address_v4 peer);

  StreamSocket(StreamSocket&& other) noexcept;
  StreamSocket& operator=(StreamSocket&&) = delete;
  ~StreamSocket() { Close(); }

  bool IsOpen() const { return isOpen_; }
  NativeSocket Native() const { return native_; }

  /// The address of the peer, even after it disconnected.
  asio::ip::address Peer() const { return peer_; }

  /// The socket as the I/O library knows it, for waiting and queries. Registers it on the first
  /// call.
  Library& Known();
  bool IsKnown() const { return library_.is_open(); }

  /// `count`: the number of bytes read into `buffer`.
  SocketResult Receive(char* buffer, std::size_t size, std::size_t& count);

  /// Whether anything could be received. Consumes nothing.
  SocketResult Peek();

  /// The number of bytes that could be received without waiting.
  std::size_t PendingBytes();

  /// `count`: the number of bytes that the system accepted. The rest has to wait.
  SocketResult Send(std::string_view bytes, Departure departure, std::size_t& count);

  /// Has the system send `size` bytes of `file` from `offset` without copying them through the
  /// program. `count`: the number of bytes that it accepted, which may be fewer at the end of the
  /// file. Waits for the disk, but never for the peer.
  ///
  /// Never possible on Windows: its desktop editions carry out two such calls at a time, for all
  /// programs together, so two peers that do not read would stop every other transfer.
  FileResult SendFile(const File& file, std::uint64_t offset, std::size_t size, std::size_t& count);

  void ShutSending();
  void Close();

 private:
  Library library_;
  NativeSocket native_;
  asio::ip::address peer_;
  bool isOpen_ = true;
};

}  // namespace platform
