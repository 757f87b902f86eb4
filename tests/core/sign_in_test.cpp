#include "core/sign_in.h"

#include <gtest/gtest.h>

#include "net/plain_loop.h"

namespace {

using namespace std::chrono_literals;
using core::SignInDelays;

TEST(SignInDelays, DoubleWithEveryFailureAndEndWithASuccessOrAfterSomeMinutes) {
  SignInDelays delays;
  SignInDelays::Clock::time_point now{1h};
  EXPECT_LE(delays.WaitOf("a", now), 0s);
  for (const auto wait : {500ms, 1000ms, 2000ms, 4000ms, 8000ms, 16000ms, 16000ms}) {
    delays.NoteFailure("a", now);
    EXPECT_EQ(delays.WaitOf("a", now), wait);
    EXPECT_LE(delays.WaitOf("b", now), 0s);
    now += wait;
    EXPECT_LE(delays.WaitOf("a", now), 0s);
  }
  now += SignInDelays::kMemory;
  delays.NoteFailure("a", now);
  delays.NoteFailure("a", now);
  EXPECT_EQ(delays.WaitOf("a", now), 1s);
  delays.NoteSuccess("a");
  EXPECT_LE(delays.WaitOf("a", now), 0s);
}

TEST(SignInDelays, ForgetTheOldestOfTooManyAddresses) {
  SignInDelays delays;
  SignInDelays::Clock::time_point now{1h};
  const std::size_t most = SignInDelays::kMostAddresses;
  for (std::size_t i = 0; i <= most; ++i) delays.NoteFailure(std::to_string(i), now += 1ms);
  EXPECT_LE(delays.WaitOf("0", now), 0s);
  EXPECT_EQ(delays.WaitOf("1", now), 500ms - (most - 1) * 1ms);
  EXPECT_EQ(delays.WaitOf(std::to_string(most), now), 500ms);
}

TEST(Login, IsOfTheNameThatWasTriedUnlessAnotherWasBegun) {
  core::Login login;
  login.Begin("bob");
  login.Begin("alice");
  login.Finish("bob", true);
  EXPECT_FALSE(login.IsSignedIn());
  login.Finish("alice", true);
  EXPECT_TRUE(login.IsSignedIn());
  login.Begin("alice");
  EXPECT_FALSE(login.IsSignedIn());
}

// Knows bob's password, and does not answer about "slow".
struct OneUser final : core::Accounts {
  net::Task<Answer> Check(std::string name, std::string password) override {
    asked += name + " ";
    net::Pause pause(1h);
    if (name == "slow") co_await pause;
    co_return name == "bob" && password == "right" ? Answer::kRight : Answer::kWrong;
  }
  std::string asked;
};

struct Attempts : testing::Test {
  Attempts() { signIn.SetAccounts(users); }

  net::Task<> Note(std::string address, std::string name, std::string password) {
    net::Task<core::Accounts::Answer> trying = signIn.Try(address, name, password);
    const core::Accounts::Answer answer = co_await trying;
    answers += "wrb"[static_cast<int>(answer)];
  }
  std::shared_ptr<net::HandlerScope> Try(const char* address, const char* name,
                                         std::string password = "right") {
    auto connection = std::make_shared<net::HandlerScope>(loop.Events(), [](const auto&) {});
    connection->Start(Note(address, name, std::move(password)));
    return connection;
  }

  OneUser users;
  core::SignIn signIn;
  std::string answers;  // the first letters of the answers
  net::PlainLoop loop;
};

TEST_F(Attempts, OfOneAddressFollowOneAnotherAndWaitAfterAFailure) {
  Try("a", "bob");
  Try("a", "bob", std::string(core::kLongestPassword + 1, 'x'));
  EXPECT_EQ(answers, "rw");
  // Hanging up is a failure too.
  const auto slow = Try("a", "slow");
  const auto second = Try("a", "bob");
  slow->End();
  loop.Events().Post([this] { loop.Stop(); });
  loop.Run();
  Try("b", "bob");
  EXPECT_EQ(users.asked, "bob slow bob ");
  EXPECT_EQ(answers, "rwr");
  std::vector<std::shared_ptr<net::HandlerScope>> others;
  for (int i = 0; i < 20; ++i) others.push_back(Try("a", "bob"));
  EXPECT_EQ(answers, "rwr" + std::string(13, 'b'));
  for (const auto& each : others) each->End();
  second->End();
}

}  // namespace
