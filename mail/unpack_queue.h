#pragma once

// Unpacks received messages one after another. That belongs to the service, not to the client whose
// QUIT asked for it: a client that leaves takes nothing along. One message at a time bounds the
// memory, however many are waiting.
//
// A stop of the service keeps what waits and what it interrupts, in the program directory, and the
// next start goes on with it: after the end of the program, too.
//
// How many wait is bounded. A client that names one message again and again has it waiting as often
// as a single QUIT can name it. When all places are taken, a message that waits more than once
// gives one of them up for another; if none does, what is added is dropped, and the error log
// tells.

#include <deque>
#include <vector>

#include "core/service_environment.h"
#include "mail/received_message.h"
#include "net/background_worker.h"
#include "settings/program.h"

namespace ModMail {

class UnpackQueue {
 public:
  static constexpr std::size_t kMostWaiting = 2048;
  static constexpr std::size_t kMostOfOne = 11;  // the recipients that one QUIT can have

  explicit UnpackQueue(const core::ServiceEnvironment& environment);

  /// Goes on with what the last stop has kept.
  void Start();

  /// Ends what is under way at once. It is unpacked from its beginning later.
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
  net::BackgroundWorker worker_;
};

}  // namespace ModMail
