#pragma once

// An open TCP connection, apart from the slot that carries it. A handler holds the connection that
// it was started for: once that has ended, reading, sending and closing on it do nothing, even if
// the slot carries another by then.
//
// Life: Adopt -> arrivals, each one starting a handler -> an end, by Close (everything sent still
// reaches the peer), by the peer, or by an error. The end ends its suspended handlers
// (net/handler_scope.h). Close hands the socket over to DrainingConnections: the connection counts
// as closed at once, though its last bytes may still be on their way.

#include <memory>
#include <string>
#include <string_view>

#include "net/buffered_socket.h"
#include "net/connection_report.h"
#include "net/handler_scope.h"
#include "net/socket_context.h"
#include "platform/file.h"
#include "platform/stream_socket.h"

namespace net {

/// The values are the customary numbers of socket states.
enum class SocketState {
  kClosed = 0,
  kListening = 2,
  kConnecting = 6,
  kConnected = 7,
  kClosing = 8,  // the peer has shut its side
  kError = 9,
};

class Connection final : public std::enable_shared_from_this<Connection>,
                         private BufferedSocket::User {
 public:
  /// Gets the connection's events.
  class Owner {
   public:
    /// Bytes have arrived; the handler takes them with GetData.
    virtual Task<> OnArrival(std::shared_ptr<Connection> connection) = 0;
    /// The peer has shut its side: nothing more will arrive. The state is kClosing.
    virtual void OnPeerClose() = 0;
    /// The connection broke. The state is kError.
    virtual void OnBreak() = 0;
    /// The connection was closed on this side. No further events follow.
    virtual void OnEnd() = 0;

   protected:
    ~Owner() = default;
  };

  /// Where it belongs, for reports. `protocol` is a constant.
  struct Place {
    std::string_view protocol;
    int slot = 0;
  };

  /// Takes over a connected socket. `owner` must live until the connection has ended.
  static std::shared_ptr<Connection> Adopt(SocketContext& context, platform::StreamSocket socket,
                                           Owner& owner, Place place);

  /// For Adopt.
  Connection(SocketContext& context, platform::StreamSocket socket, Owner& owner, Place place);

  SocketState State() const { return state_; }
  bool IsClosed() const { return state_ == SocketState::kClosed; }
  std::string LocalAddress();  // looked up once
  /// Known even after the client has gone.
  std::string RemoteAddress() const;

  /// The command that the connection carries out from now on, for reports; kept as one printable
  /// line of a few hundred bytes. Its end is not told to the observer. An activity that was begun
  /// and not finished is complete.
  void Doing(std::string_view command);
  /// The same for an activity whose end is told; `began` is set.
  void Begin(Activity activity);
  /// The size of the transfer that this is.
  void Expect(std::uint64_t bytes) { activity_.total = bytes; }
  /// The subject of the message that this is.
  void Describe(std::string_view detail);
  /// Tells the observer how the activity ended, if that has not been told. It stays in reports
  /// until the next. The end of the connection finishes it, too.
  void Finish(ActivityEnd end);
  /// Whether an activity has begun whose end has not been told.
  bool IsUnfinished() const { return isEndUntold_; }
  /// Tells the observer of an activity that is over, beside the current one.
  void Tell(Activity activity, ActivityEnd end);
  /// The bytes of both directions since the connection began.
  std::uint64_t BytesSoFar() const { return bytes_; }
  bool HasHandlers() const { return handlers_->HandlerCount() > 0; }
  /// Whether anybody is told; paths and subjects are made for observers only.
  bool IsObserved() const { return context_.observer != nullptr; }
  const Activity& CurrentActivity() const { return activity_; }
  std::chrono::system_clock::time_point Since() const { return since_; }

  /// Starts reading arrivals, the first perhaps before it returns. Call it once the owner is ready
  /// for them.
  void StartReading();

  /// While held, bytes that arrive stay with the sender. A close by the peer is still noticed,
  /// unless bytes wait in front of it. May be called before StartReading.
  void HoldReading(bool hold);

  /// Takes all bytes that have arrived since the last call.
  std::string GetData();

  /// From now on an arrival is what one read finds, at most 256 KiB. Its handler gets it with
  /// ViewData before its first await, or it is lost.
  void ReceiveInBulk() { receivesInBulk_ = true; }
  std::string_view ViewData() const { return bulk_; }

  /// Sends `bytes` after those sent before. Never blocks; await Sent before producing more, or what
  /// a slow peer does not take piles up here. Does nothing on a connection that has ended.
  void SendData(std::string_view bytes,
                platform::Departure departure = platform::Departure::kAtOnce);

  /// Sends `size` bytes of `file` from `offset` after what was sent before, and returns when the
  /// system has taken them all. What a slow peer does not take stays in the file. False if the file
  /// ended before that or could not be read; the bytes before its end have been sent. `file` must
  /// live until then. Does nothing on a connection that has ended.
  Task<bool> SendFile(const platform::File& file, std::uint64_t offset, std::uint64_t size,
                      platform::Departure departure = platform::Departure::kAtOnce);

  /// Whether the system has yet to take some of what was sent.
  bool HasUnsentBytes() const { return socket_->HasUnsentBytes(); }

  /// Waits until the system has taken everything sent so far.
  Task<> Sent() { return socket_->Sent(); }

  /// Starts a handler that belongs to this connection without an arrival.
  void StartHandler(Task<> handler) { handlers_->Start(std::move(handler)); }

  /// Ends the connection, and the current activity as `end` says. Everything sent reaches the peer,
  /// even if there are bytes from it that were never read.
  void Close(ActivityEnd end = ActivityEnd::kComplete);

  /// Closes once no handler of this connection is left: an answer under way to a peer that has shut
  /// its own side is still sent. What no handler has finished, the client has left.
  void CloseWhenHandlersEnd();

 private:
  bool IsOpen() const;
  bool MayRead() const;
  bool IsFullOfHandlers() const;
  void ContinueReading();
  void ContinueReadingAfter(int passes);
  void WatchPeer();
  void TakeArrival();
  platform::SocketResult ReadPending();
  void OnPeerShut();
  void OnHandlerEnd();
  void Break();
  void Report(const Activity& activity, ActivityEnd end);
  void EndHandlers(SocketState state);
  void CountReceived(std::size_t bytes);
  void CountSent(std::size_t bytes);
  void BreakSoon();

  void OnReadable() override;
  void OnFailure() override { Break(); }

  static constexpr int kMostHandlers = 64;
  static constexpr int kPassesBeforeReading = 3;
  static constexpr std::chrono::seconds kPeerLook{1};

  SocketContext& context_;
  Owner& owner_;
  const Place place_;
  std::shared_ptr<BufferedSocket> socket_;  // no longer this connection's to use after a close
  SocketState state_ = SocketState::kConnected;
  std::string localAddress_;
  std::shared_ptr<HandlerScope> handlers_;
  std::string arrived_;
  std::string_view bulk_;  // the arrival, while its handler starts
  Activity activity_;
  std::uint64_t bytes_ = 0;
  bool isEndUntold_ = false;  // of the activity
  const std::chrono::system_clock::time_point since_ = std::chrono::system_clock::now();
  Timer peerLook_;  // runs while so many handlers are suspended that nothing is read
  bool readingStarted_ = false;
  bool readingHeld_ = false;
  bool receivesInBulk_ = false;
  bool closesWithLastHandler_ = false;
};

}  // namespace net
