// The main of test programs whose servers run without a window.

#include <gtest/gtest.h>

#include <thread>

#include "net/plain_loop.h"
#include "tests/support/loop_host.h"

namespace {

class PlainLoopHost : public test::LoopHost {
 public:
  PlainLoopHost() : thread_([this] { loop_.Run(); }) {}
  ~PlainLoopHost() override {
    loop_.Stop();
    thread_.join();
  }
  net::EventLoop& Loop() override { return loop_.Events(); }

 private:
  net::PlainLoop loop_;
  std::thread thread_;
};

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a test program that cannot start has failed
int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  PlainLoopHost host;
  test::SetLoopHost(host);
  return RUN_ALL_TESTS();
}
