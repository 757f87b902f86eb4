#include "net/event_loop.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "net/background_worker.h"
#include "net/handler_scope.h"
#include "net/plain_loop.h"

namespace {

using net::Task;

TEST(EventLoop, OutlivesWhatItsEventsThrow) {
  net::PlainLoop loop;
  std::vector<std::string> errors;
  loop.Events().OnError([&](const std::string& error) { errors.push_back(error); });
  net::Timer failing(loop.Events());
  net::Timer last(loop.Events());
  loop.Events().Post([] { throw std::runtime_error("posted"); });
  failing.Start(std::chrono::milliseconds(1), [] { throw std::runtime_error("timer"); });
  last.Start(std::chrono::milliseconds(2), [&] { loop.Stop(); });
  loop.Run();
  EXPECT_EQ(errors, (std::vector<std::string>{"posted", "timer"}));
}

TEST(EventLoop, AStopBeforeTheRunHoldsForThatRunAlone) {
  net::PlainLoop loop;
  bool ran = false;
  loop.Stop();
  loop.Run();
  loop.Events().Post([&] {
    ran = true;
    loop.Stop();
  });
  loop.Run();
  EXPECT_TRUE(ran);
}

Task<int> One() { co_return 1; }

Task<> AddUp(int count, int& sum) {
  for (int i = 0; i < count; ++i) {
    Task<int> one = One();
    sum += co_await one;
  }
}

TEST(Tasks, ThatEndAtOnceNeedNoStackHoweverMany) {
  constexpr int kCount = 1'000'000;
  net::PlainLoop loop;
  int sum = 0;
  const auto scope = std::make_shared<net::HandlerScope>(loop.Events(), [](const std::string&) {});
  scope->Start(AddUp(kCount, sum));
  EXPECT_EQ(sum, kCount);
}

Task<> Count(int& count) {
  for (int i = 0; i < 3; ++i) {
    ++count;
    co_await net::YieldToEvents();
  }
}

TEST(Scopes, MayEndInTheirOwnHandlersEnd) {
  net::PlainLoop loop;
  auto scope = std::make_shared<net::HandlerScope>(loop.Events(), [](const std::string&) {});
  int count = 0;
  scope->OnHandlerEnd([&loop, &scope] {
    const auto ended = std::exchange(scope, nullptr);
    ended->End();
    loop.Stop();
  });
  scope->Start(Count(count));
  loop.Run();
  EXPECT_EQ(count, 3);
}

TEST(BackgroundWorkers, RunOneHandlerAtATimeAndCanBeStartedAgain) {
  net::PlainLoop loop;
  int count = 0;
  std::vector<std::string> errors;
  net::BackgroundWorker worker(
      loop.Events(), [&](const std::string& error) { errors.push_back(error); },
      [&]() -> Task<> {
        if (count == 2) throw std::runtime_error("no more");
        return Count(count);
      });
  worker.Start();
  worker.Start();
  EXPECT_EQ(count, 1);
  worker.Stop();
  EXPECT_FALSE(worker.IsWorking());
  worker.Start();
  EXPECT_EQ(count, 2);
  EXPECT_TRUE(worker.IsWorking());
  worker.Stop();
  worker.Start();
  EXPECT_EQ(errors, std::vector<std::string>{"no more"});
  EXPECT_FALSE(worker.IsWorking());
}

}  // namespace
