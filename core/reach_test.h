#pragma once

// Connects to a service of this machine as another machine would, by the address in the network and
// the port in use, and waits for what the protocol says first. It sends nothing, so that the
// service has nothing to record; of the Web server, which speaks only when asked, a connection has
// to do.
//
// It proves that the service answers on that address, not that nothing between the machines blocks
// it: the system never sends these bytes out.

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/service.h"
#include "net/draining_connections.h"
#include "net/event_socket.h"

namespace core {

class ReachTest final : private net::SocketEvents {
 public:
  enum class Finding {
    kReached,
    kRefused,     // nobody listens, or the system says at once that there is no way
    kNoAnswer,    // no connection within the time
    kSilent,      // a connection, and no greeting within the time
    kStranger,    // something else was said first
    kTurnedAway,  // closed without a greeting
  };

  /// A port, and how the greeting there begins.
  struct Step {
    int port = 0;
    std::string_view greeting = {};  // empty: none is waited for
  };
  static std::vector<Step> StepsOf(ServiceKind service, Ports ports);

  /// The finding at `port`, the first port where it is not kReached.
  using Done = std::function<void(Finding finding, int port)>;

  static constexpr std::chrono::milliseconds kPatience{3000};  // for each step

  explicit ReachTest(net::EventLoop& loop, std::chrono::milliseconds patience = kPatience);
  ~ReachTest() { Cancel(); }
  ReachTest(const ReachTest&) = delete;
  ReachTest& operator=(const ReachTest&) = delete;

  /// Takes the steps, at least one, at an IPv4 address in turn, and then calls `done` once, as an
  /// event of its own. A test under way is cancelled.
  void Start(const std::string& address, std::vector<Step> steps, Done done);

  /// `done` will not be called.
  void Cancel();

 private:
  void TakeNextStep();
  void Find(Finding finding);
  void EndStep(Finding finding);
  const Step& Current() const { return steps_[next_]; }

  void OnConnectionRequest(int, net::ConnectionRequest&) override {}
  void OnConnect(int index) override;
  net::Task<> OnDataArrival(int index, std::shared_ptr<net::Connection> connection) override;
  void OnClose(int index) override;
  void OnError(int index) override;

  const std::chrono::milliseconds patience_;
  net::DrainingConnections draining_;
  net::SocketContext context_;
  net::EventSocket socket_;
  net::Timer timer_;  // the patience with a step, then its end
  std::string address_;
  std::vector<Step> steps_;
  std::size_t next_ = 0;
  std::string heard_;
  bool isDecided_ = false;
  Done done_;
};

}  // namespace core
