#include "core/reach_test.h"

#include <utility>

namespace core {

std::vector<ReachTest::Step> ReachTest::StepsOf(ServiceKind service, Ports ports) {
  switch (service) {
    case ServiceKind::kWeb:
      return {{ports.first}};
    case ServiceKind::kFtp:
      return {{ports.first, "220"}};
    case ServiceKind::kMail:
      break;
  }
  return {{ports.first, "220"}, {ports.second, "+OK"}};
}

ReachTest::ReachTest(net::EventLoop& loop, std::chrono::milliseconds patience)
    : patience_(patience),
      draining_(loop),
      context_{loop, draining_, [](const std::string&) {}},
      socket_(context_, static_cast<net::SocketEvents&>(*this), 1, "Test"),
      timer_(loop) {}

void ReachTest::Start(const std::string& address, std::vector<Step> steps, Done done) {
  Cancel();
  address_ = address;
  steps_ = std::move(steps);
  next_ = 0;
  done_ = std::move(done);
  TakeNextStep();
}

void ReachTest::Cancel() {
  timer_.Stop();
  isDecided_ = true;
  done_ = nullptr;
  socket_.Close();
}

void ReachTest::TakeNextStep() {
  isDecided_ = false;
  heard_.clear();
  timer_.Start(patience_, [this] {
    const bool connects = socket_.State() == net::SocketState::kConnecting;
    EndStep(connects ? Finding::kNoAnswer : Finding::kSilent);
  });
  socket_.Connect(0, address_, static_cast<std::uint16_t>(Current().port));
}

// The socket is in the middle of an event, so it is closed in the next one.
void ReachTest::Find(Finding finding) {
  if (std::exchange(isDecided_, true)) return;
  timer_.Start(std::chrono::milliseconds(0), [this, finding] { EndStep(finding); });
}

void ReachTest::EndStep(Finding finding) {
  isDecided_ = true;
  socket_.Close();
  if (finding == Finding::kReached && next_ + 1 < steps_.size()) {
    ++next_;
    return TakeNextStep();
  }
  const Done done = std::exchange(done_, nullptr);
  if (done) done(finding, Current().port);
}

void ReachTest::OnConnect(int) {
  if (Current().greeting.empty()) Find(Finding::kReached);
}

net::Task<> ReachTest::OnDataArrival(int, std::shared_ptr<net::Connection> connection) {
  heard_ += connection->GetData();
  const std::string_view wanted = Current().greeting;
  if (heard_.starts_with(wanted)) {
    Find(Finding::kReached);
  } else if (!wanted.starts_with(heard_)) {
    Find(Finding::kStranger);
  }
  co_return;
}

void ReachTest::OnClose(int) { Find(Finding::kTurnedAway); }

void ReachTest::OnError(int) { Find(Finding::kRefused); }

}  // namespace core
