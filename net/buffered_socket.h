#pragma once

// A connected socket with what waiting takes: an outbox for the bytes that the system does not take
// at once, and a wait for something to read. It has one user at a time, first the open connection
// and after the close the draining one. It is shared because pending operations refer to it: what
// they complete is reported to the user of that moment, or to nobody once the socket is closed or
// the user is gone.
//
// The I/O library gets to know the socket only when something has to be waited for.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "net/handler_scope.h"
#include "net/socket_context.h"
#include "platform/file.h"
#include "platform/stream_socket.h"

namespace net {

class BufferedSocket : public std::enable_shared_from_this<BufferedSocket> {
 public:
  class User {
   public:
    virtual ~User() = default;

    /// There is something to read, or the peer has shut its side.
    virtual void OnReadable() = 0;
    /// The outbox has become empty.
    virtual void OnSent() {}
    /// Waiting or sending failed, or one of the above threw, which has been reported.
    virtual void OnFailure() = 0;
  };

  BufferedSocket(SocketContext& context, platform::StreamSocket socket)
      : context_(context), socket_(std::move(socket)) {}

  /// From now on `user` gets the reports.
  void SetUser(std::weak_ptr<User> user) { user_ = std::move(user); }

  /// For everything that does not wait.
  platform::StreamSocket& Socket() { return socket_; }
  const platform::StreamSocket& Socket() const { return socket_; }

  /// Reads everything that is pending at this moment and appends it to `arrived`.
  platform::SocketResult Receive(std::string& arrived);

  /// Reads what is pending, at most 256 KiB. `arrived` is valid until any socket is read again.
  platform::SocketResult ReceiveInPlace(std::string_view& arrived);

  /// Reads some of what is pending and throws it away.
  platform::SocketResult Discard();

  /// Has OnReadable called once. Does nothing if that is still to come.
  void AwaitReadable();

  /// Calls OnReadable now.
  void ReportReadable();

  /// Sends `bytes` after those that wait. The outbox keeps what the system does not take; false if
  /// the socket is broken, which is not reported.
  bool Send(std::string_view bytes, platform::Departure departure);

  /// What is left of a file that is being sent; `departure` is that of its last byte.
  struct FileRest {
    const platform::File& file;
    std::uint64_t offset;
    std::uint64_t size;
    platform::Departure departure;
  };

  /// Sends some of it; the outbox must be empty. `count`: how many bytes were sent or are in the
  /// outbox now, which on Linux keeps 16 KiB at most, on Windows 64 KiB. kWouldWait: the system
  /// takes no more for now.
  platform::FileResult SendPiece(const FileRest& rest, std::size_t& count);

  /// Waits until the system may take more bytes; perhaps for less.
  Task<> Writable();

  /// The bytes in the outbox.
  std::size_t UnsentBytes() const { return inFlight_.size() + waiting_.size(); }
  bool HasUnsentBytes() const { return UnsentBytes() != 0; }

  /// Waits until the outbox is empty.
  Task<> Sent();
  /// Lets whoever waits in Sent or Writable look again.
  void WakeSenders() { sentWaiters_.WakeAll(); }

 private:
  template <class Step>
  void Report(const Step& step);
  void OnWaited(const asio::error_code& error);
  platform::FileResult HandOver(const FileRest& rest, std::size_t& count);
  platform::FileResult CopyToOutbox(const FileRest& rest, std::size_t& count);
  void OnWritable(const asio::error_code& error);
  void SendInFlight();
  void OnTaken(const asio::error_code& error);

  SocketContext& context_;  // may be gone once the socket is closed
  platform::StreamSocket socket_;
  std::weak_ptr<User> user_;
  std::string inFlight_;  // what the system has been given to send
  std::string waiting_;   // what goes next
  WaitList sentWaiters_;
  bool awaitingReadable_ = false;
  bool awaitingWritable_ = false;
  bool copiesFiles_ = !platform::StreamSocket::kSendsFiles;
};

}  // namespace net
