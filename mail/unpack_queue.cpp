#include "mail/unpack_queue.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

#include "core/service_environment.h"
#include "mail/message_parser.h"
#include "mail/unpack_list.h"

namespace ModMail {

UnpackQueue::UnpackQueue(const core::ServiceEnvironment& environment)
    : program_(environment.program),
      worker_(
          environment.loop, [this](const std::string& error) { program_.errors.LogError(error); },
          [this] { return Work(); }) {}

void UnpackQueue::Start() { Add(TakeUnpackList(program_)); }

void UnpackQueue::Stop() {
  worker_.Stop();
  // A list that is there from before, while nothing waits, is the next start's.
  if (!waiting_.empty() && SaveUnpackList(program_, waiting_)) waiting_.clear();
}

void UnpackQueue::Add(const std::vector<ReceivedMessage>& messages) {
  for (const ReceivedMessage& message : messages) Enter(message);
  if (!waiting_.empty()) worker_.Start();
}

void UnpackQueue::Enter(const ReceivedMessage& message) {
  const auto times = std::count(waiting_.begin(), waiting_.end(), message);
  if (static_cast<std::size_t>(times) >= kMostOfOne) return;
  if (waiting_.size() < kMostWaiting || (times == 0 && MakeRoom())) {
    waiting_.push_back(message);
  } else if (times == 0) {
    program_.errors.LogError(PathOf(message) + ": too many messages wait to be unpacked");
  }
}

// The last one that waits a second time goes.
bool UnpackQueue::MakeRoom() {
  std::set<std::reference_wrapper<const ReceivedMessage>, std::less<ReceivedMessage>> seen;
  auto repeated = waiting_.end();
  for (auto message = waiting_.begin(); message != waiting_.end(); ++message) {
    if (!seen.insert(*message).second) repeated = message;
  }
  if (repeated == waiting_.end()) return false;
  waiting_.erase(repeated);
  return true;
}

net::Task<> UnpackQueue::Work() {
  // First whoever is waiting for the reply that was sent just now.
  co_await net::YieldToEvents();
  while (!waiting_.empty()) {
    net::Task<> unpacking = Unpack(waiting_.front());
    co_await unpacking;
  }
}

// It waits until it has begun, and again if it is interrupted.
net::Task<> UnpackQueue::Unpack(ReceivedMessage message) {
  waiting_.pop_front();
  try {
    MessageParser parser(PathOf(message), message.mailRoot);
    net::Task<> unpacking = parser.Unpack();
    co_await unpacking;
  } catch (const net::HandlerEnded&) {
    waiting_.push_front(message);
    throw;
  } catch (const std::exception& error) {
    // One message's fault must not keep the others waiting.
    program_.errors.LogError(PathOf(message) + ": " + error.what());
  }
}

}  // namespace ModMail
