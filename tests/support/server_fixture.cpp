#include "tests/support/server_fixture.h"

#include <chrono>
#include <future>
#include <thread>

#include "core/service_environment.h"

namespace test {
namespace {

LoopHost* theLoopHost = nullptr;

}  // namespace

void LoopHost::Call(const std::function<void()>& action) {
  std::promise<void> done;
  Loop().Post([&] {
    action();
    done.set_value();
  });
  done.get_future().wait();
}

LoopHost& TheLoopHost() { return *theLoopHost; }

void SetLoopHost(LoopHost& host) { theLoopHost = &host; }

core::ServiceEnvironment ProgramFixture::Environment() {
  return {program_, TheLoopHost().Loop(), home_.Text("hosts")};
}

bool ProgramFixture::Eventually(const std::function<bool()>& condition) {
  constexpr int kTries = 1000;
  for (int i = 0; i < kTries; ++i) {
    bool holds = false;
    OnLoop([&] { holds = condition(); });
    if (holds) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

}  // namespace test
