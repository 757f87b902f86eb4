#include "net/event_loop.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>

#include "net/background_worker.h"
#include "net/plain_loop.h"
#include "net/side_thread.h"

namespace {

using net::Task;

class Loop : public testing::Test {
 protected:
  static Task<int> One() { co_return 1; }
  Task<> AddUp(int times) {
    for (int i = 0; i < times; ++i) {
      Task<int> one = One();
      count_ += co_await one;
    }
  }
  Task<> CountToThree() {
    for (int i = 0; i < 3; ++i) {
      ++count_;
      co_await net::YieldToEvents();
    }
    throw std::runtime_error("last");
  }

  net::PlainLoop loop_;
  net::HandlerScope::ErrorReport report_ = [this](const std::string& error) {
    errors_ += error + " ";
    if (error == "last") loop_.Stop();
  };
  std::string errors_;
  int count_ = 0;
};

TEST_F(Loop, OutlivesWhatItsEventsThrow) {
  loop_.Events().OnError(report_);
  net::Timer failing(loop_.Events());
  loop_.Events().Post([] { throw std::runtime_error("posted"); });
  failing.Start(std::chrono::milliseconds(1), [] { throw std::runtime_error("last"); });
  loop_.Run();
  EXPECT_EQ(errors_, "posted last ");
}

TEST_F(Loop, TasksThatEndAtOnceNeedNoStackHoweverMany) {
  std::make_shared<net::HandlerScope>(loop_.Events(), report_)->Start(AddUp(1'000'000));
  EXPECT_EQ(count_, 1'000'000);
}

TEST_F(Loop, AWorkerRunsOneHandlerAtATimeAndCanBeStartedAgain) {
  net::BackgroundWorker worker(loop_.Events(), report_, [this] { return CountToThree(); });
  for (int starts = 1; starts <= 2; ++starts) {
    worker.Start();
    worker.Start();
    EXPECT_EQ(count_, starts);
    worker.Stop();
    EXPECT_FALSE(worker.IsWorking());
  }
  worker.Start();
  loop_.Run();
  EXPECT_EQ(errors_, "last ");
  EXPECT_FALSE(worker.IsWorking());
}

Task<> WorkOn(net::SideThread& thread, std::shared_future<void> isReady, const char* error) {
  const auto work = [isReady, error] {
    isReady.wait();
    throw std::runtime_error(error);
  };
  Task<> running = thread.Run(work);
  co_await running;
}

TEST_F(Loop, WorkBesideLetsTheLoopGoOnAndIsWaitedForEvenIfItsHandlerHasEnded) {
  std::promise<void> ready;
  const std::shared_future<void> isReady = ready.get_future().share();
  net::SideThread thread;
  const auto left = std::make_shared<net::HandlerScope>(loop_.Events(), report_);
  left->Start(WorkOn(thread, isReady, "left"));
  left->End();
  std::make_shared<net::HandlerScope>(loop_.Events(), report_)
      ->Start(WorkOn(thread, isReady, "last"));
  net::Timer timer(loop_.Events());
  timer.Start(std::chrono::milliseconds(5), [&] { ready.set_value(); });
  loop_.Run();
  EXPECT_EQ(errors_, "last ");
}

}  // namespace
