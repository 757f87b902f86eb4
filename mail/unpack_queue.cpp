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
  flushing_.Finish();  // Windows keeps the name of the unfinished file until then
  // If nothing waits, an earlier list is left for the next start.
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

// Removes the last message that also waits elsewhere.
bool UnpackQueue::MakeRoom() {
  using Message = std::reference_wrapper<const ReceivedMessage>;
  const auto isLess = [](Message left, Message right) { return left.get() < right.get(); };
  std::set<Message, decltype(isLess)> seen(isLess);
  auto repeated = waiting_.end();
  for (auto message = waiting_.begin(); message != waiting_.end(); ++message) {
    if (!seen.insert(*message).second) repeated = message;
  }
  if (repeated == waiting_.end()) return false;
  waiting_.erase(repeated);
  return true;
}

net::Task<> UnpackQueue::Work() {
  // The reply to the QUIT goes out first.
  co_await net::YieldToEvents();
  while (!waiting_.empty()) {
    net::Task<> unpacking = Unpack(waiting_.front());
    co_await unpacking;
  }
}

// A message leaves the queue when its unpacking begins, and returns if that is interrupted.
net::Task<> UnpackQueue::Unpack(ReceivedMessage message) {
  waiting_.pop_front();
  try {
    MessageParser parser(PathOf(message), message.mailRoot, flushing_);
    net::Task<> unpacking = parser.Unpack();
    co_await unpacking;
  } catch (const net::HandlerEnded&) {
    waiting_.push_front(message);
    throw;
  } catch (const std::exception& error) {
    // A fault in one message must not stop the others.
    program_.errors.LogError(PathOf(message) + ": " + error.what());
  }
}

}  // namespace ModMail
