#pragma once

// Unpacks received messages one at a time. The work belongs to the service, not to the client whose
// QUIT requested it, and continues when that client leaves.
//
// A stop of the service saves the messages that wait or are interrupted in the program directory,
// and the next start continues with them, also after the end of the program.
//
// The queue is bounded. One message waits at most as often as a single QUIT can name it. When the
// queue is full, a message that waits more than once loses a place to a new one; if there is none,
// the new message is dropped and logged.

#include <deque>
#include <vector>

#include "core/service_environment.h"
#include "mail/received_message.h"
#include "net/background_worker.h"
#include "net/side_thread.h"
#include "settings/program.h"

namespace ModMail {

class UnpackQueue {
 public:
  static constexpr std::size_t kMostWaiting = 2048;
  static constexpr std::size_t kMostOfOne = 11;  // the recipients that one QUIT can have

  explicit UnpackQueue(const core::ServiceEnvironment& environment);

  /// Continues with what the last stop saved.
  void Start();

  /// Interrupts the current message, which is unpacked from its beginning later.
  void Stop();

  void Add(const std::vector<ReceivedMessage>& messages);

  bool IsIdle() const { return !worker_.IsWorking(); }

 private:
  void Enter(const ReceivedMessage& message);
  bool MakeRoom();
  net::Task<> Work();
  net::Task<> Unpack(ReceivedMessage message);

  const settings::Program& program_;
  std::deque<ReceivedMessage> waiting_;
  net::SideThread flushing_;
  net::BackgroundWorker worker_;
};

}  // namespace ModMail
