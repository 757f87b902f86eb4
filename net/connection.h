#pragma once

// One TCP connection for as long as it lives, apart from the slot that carries it. A handler holds
// the connection that it was started for: once that has ended, reading, sending and closing on it
// do nothing, whoever has the slot by then.
//
// Life: Adopt -> arrivals, each one starting a handler -> an end, by Close (everything sent still
// reaches the peer), by Reset, by the peer, or by an error. At the end its suspended handlers end
// (net/handler_scope.h) and the connection counts as closed at once, though its last bytes may
// still be on their way (net/draining_connections.h).

#include <list>
#include <memory>
#include <string>
#include <string_view>

#include "net/connection_report.h"
#include "net/handler_scope.h"
#include "platform/stream_socket.h"

namespace net {

class Connection;
class DrainingConnections;

/// The numbers are the ones that socket states are known by.
enum class SocketState {
  kClosed = 0,
  kListening = 2,
  kConnecting = 6,
  kConnected = 7,
  kClosing = 8,  // the peer has shut its side
  kError = 9,
};

/// What all sockets of one service share.
struct SocketContext {
  EventLoop& loop;
  DrainingConnections& draining;
  HandlerScope::ErrorReport reportError;
  Traffic traffic = {};  // of all its connections so far
};

/// Who is told of a connection's events.
class ConnectionOwner {
 public:
  /// Bytes have arrived; the handler takes them with GetData.
  virtual Task<> OnArrival(std::shared_ptr<Connection> connection) = 0;
  /// The peer has shut its side: nothing more will arrive. The state is kClosing.
  virtual void OnPeerClose() = 0;
  /// The connection broke. The state is kError.
  virtual void OnBreak() = 0;
  /// The connection was closed by us. The owner hears nothing more of it.
  virtual void OnEnd() = 0;

 protected:
  ~ConnectionOwner() = default;
};

class Connection : public std::enable_shared_from_this<Connection> {
 public:
  using Socket = platform::StreamSocket;

  /// Takes over a connected socket. `owner` must live until the connection has ended.
  static std::shared_ptr<Connection> Adopt(SocketContext& context, Socket socket,
                                           ConnectionOwner& owner);

  Connection(SocketContext& context, Socket socket, ConnectionOwner& owner);

  SocketState State() const { return state_; }
  bool IsClosed() const { return state_ == SocketState::kClosed; }
  std::string LocalAddress();
  /// Also of a client that has gone.
  std::string RemoteAddress() const;

  /// Notes what the connection is doing from now on, for whoever watches: as one printable line of
  /// a few hundred bytes.
  void Doing(std::string_view what);
  /// The size of the transfer that it is doing.
  void Expect(std::uint64_t bytes) { activity_.total = bytes; }
  const Activity& CurrentActivity() const { return activity_; }
  std::chrono::system_clock::time_point Since() const { return since_; }

  /// From now on arrivals are read. Not before the owner is ready for them.
  void StartReading();

  /// While held, bytes that arrive stay with the sender; that the peer closes is noticed all the
  /// same, unless bytes wait in front of it.
  void HoldReading(bool hold);

  /// All bytes that have arrived and were not taken yet.
  std::string GetData();

  /// Sends `bytes` after those sent before. Never blocks; wait for Sent before making more, or what
  /// a slow peer does not take piles up here. Does nothing on a connection that has ended.
  void SendData(std::string_view bytes,
                platform::Departure departure = platform::Departure::kAtOnce);

  /// Lets the system gather many small sends into few large segments: for bulk that goes one way,
  /// and whose end is a close. Without it every send goes out at once.
  void GatherSends();

  /// Whether the system has yet to take something.
  bool HasUnsentBytes() const { return !outbox_.IsEmpty(); }

  /// Waits until the system has taken everything sent so far.
  Task<> Sent();

  /// Starts a handler that belongs to this connection without an arrival.
  void StartHandler(Task<> handler) { handlers_->Start(std::move(handler)); }

  /// Ends the connection. Everything sent reaches the peer, even if it has sent bytes that nobody
  /// read.
  void Close();

  /// Closes once no handler of this connection runs any more: an answer under way to a peer that
  /// has shut its own side is still sent.
  void CloseWhenHandlersEnd();

  /// Ends the connection and drops what was not sent.
  void Reset();

 private:
  friend class DrainingConnections;

  // What is in flight to the peer, and what waits behind it.
  struct Outbox {
    std::string inFlight;
    std::string waiting;
    bool IsEmpty() const { return inFlight.empty() && waiting.empty(); }
  };

  bool MayRead() const;
  bool IsFullOfHandlers() const;
  void ContinueReading();
  void ContinueReadingAfter(int passes);
  void WatchPeer();
  void AwaitReadable();
  void OnReadable();
  void OnWaitFailure();
  template <class Step>
  void BreakIfItThrows(const Step& step);
  void TakeArrival();
  platform::SocketResult ReadPending();
  void OnPeerShut();
  void Break();
  void EndHandlers(SocketState state);

  void CountReceived(std::size_t bytes);
  void CountSent(std::size_t bytes);
  void SendRest();
  void OnTaken(const asio::error_code& error);

  // While draining.
  std::size_t WaitingBytes() const { return outbox_.inFlight.size() + outbox_.waiting.size(); }
  std::size_t UnsentBytes() const;
  void ShutWhenSent();
  void DiscardArrivals();
  bool EndIfPeerShut();
  void AwaitEnd();
  void Abandon();

  static constexpr int kMostHandlers = 64;
  static constexpr int kPassesBeforeReading = 3;
  static constexpr std::chrono::seconds kPeerLook{1};

  SocketContext& context_;
  Socket socket_;
  ConnectionOwner* owner_;
  SocketState state_ = SocketState::kConnected;
  std::shared_ptr<HandlerScope> handlers_;
  std::string arrived_;
  Outbox outbox_;
  Activity activity_;
  const std::chrono::system_clock::time_point since_ = std::chrono::system_clock::now();
  WaitList sentWaiters_;
  Timer peerLook_;         // runs while so many handlers are suspended that nothing is read
  bool reading_ = false;   // StartReading was called
  bool held_ = false;      // HoldReading
  bool awaiting_ = false;  // the system has been asked for readability
  bool draining_ = false;  // closed, the last bytes are on their way
  bool peerShut_ = false;
  bool closeWhenIdle_ = false;
};

}  // namespace net
