#include "net/connection.h"

#include "tests/net/slots_fixture.h"

namespace {

using net::Task;
using test::Client;

class Connections : public test::SlotsFixture {
 public:
  Task<> Record(Arrival connection) {
    arrivals_.push_back(connection->GetData());
    co_return;
  }
  Task<> AnswerAndClose(Arrival connection) {
    for (std::size_t i = 1; i <= pieces_; ++i) {
      connection->SendData(std::string(size_ / pieces_, 'a'));
      if (i == pieces_) break;
      Task<> sent = connection->Sent();
      co_await sent;
    }
    connection->Close();
  }
  Task<> AnswerLate(Arrival connection) {
    co_await net::YieldToEvents();
    connection->SendData("mine\r\n");
  }
  Task<> Wait(Arrival connection) {
    arrivals_.push_back(connection->GetData());
    try {
      net::WaitList::Awaiter wait = never_.Wait();
      co_await wait;
      connection->SendData("mine\r\n");
    } catch (const net::HandlerEnded&) {
      ++ended_;
      connection->SendData("never seen");
      throw;
    }
  }
  Task<> Throw(Arrival) { throw std::bad_alloc(); }

 protected:
  Connections() {
    Open(BusySlot::kEvict);
    HandleWith(&Connections::Record);
  }

  void HandleWith(Task<> (Connections::*handler)(Arrival)) {
    OnLoop([&] {
      onArrival_ = [this, handler](int, Arrival connection) {
        return (this->*handler)(std::move(connection));
      };
    });
  }

  // Waits until `bytes` have arrived on all connections together.
  bool Arrive(std::size_t bytes) {
    return Eventually([&] {
      std::size_t sum = 0;
      for (const std::string& arrival : arrivals_) sum += arrival.size();
      return sum == bytes;
    });
  }
  // Lets the loop serve what was sent before: a new client's round trip.
  void PassEvents() {
    HandleWith(&Connections::AnswerLate);
    EXPECT_EQ(NewClient("?")->ReceiveLine(), "mine\r\n");
    HandleWith(&Connections::Record);
  }

  std::size_t size_ = 0;
  std::size_t pieces_ = 1;
  std::vector<std::string> arrivals_;
  int ended_ = 0;
  net::WaitList never_;
};

TEST_F(Connections, DeliverAllPendingBytesAsOneArrival) {
  const auto client = NewClient();
  // While this holds the loop, all of it becomes pending, or as much as the system takes.
  OnLoop([&] { client->Send(std::string(150000, 'x')); });
  ASSERT_TRUE(Arrive(150000));
  OnLoop([&] { EXPECT_LE(arrivals_.size(), 2U); });
}

TEST_F(Connections, ASlowReaderGetsEveryByteThoughTheServerHasClosed) {
  HandleWith(&Connections::AnswerAndClose);
  size_ = 20'000'000;
  pieces_ = 50;
  const auto client = NewClient("?");
  ASSERT_TRUE(Eventually([&] {
    const Arrival connection = (*slots_)[1].Current();
    return connection && connection->HasUnsentBytes();
  }));
  EXPECT_EQ(client->ReceiveAll().size(), size_);
  EXPECT_FALSE(client->WasReset());
  // The end came from the server's shutting its side, not from its giving up.
  OnLoop([&] { EXPECT_EQ(draining_->Count(), 1U); });
}

TEST_F(Connections, ACloseOverUnreadBytesDoesNotCutTheAnswer) {
  HandleWith(&Connections::AnswerAndClose);
  size_ = 300000;
  const auto client = NewClient("first");
  ASSERT_TRUE(Eventually([&] { return draining_->Count() == 1; }));
  client->Send(std::string(200000, 'z'));
  EXPECT_EQ(client->ReceiveAll().size(), size_);
  EXPECT_FALSE(client->WasReset());
}

TEST_F(Connections, ThatAreClosedAndReadByNobodyAreGivenUp) {
  constexpr std::size_t kMost = 256;
  HandleWith(&Connections::AnswerAndClose);
  size_ = 300000;
  std::vector<std::unique_ptr<Client>> idle;
  for (std::size_t i = 1; i <= kMost + 20; ++i) {
    idle.push_back(NewClient("?"));
    // An eviction before the answer would be another matter.
    ASSERT_TRUE(Eventually([&] { return context_->traffic.sent == size_ * i; }));
  }
  OnLoop([&] { EXPECT_EQ(draining_->Count(), kMost); });
  EXPECT_EQ(idle.back()->ReceiveAll().size(), size_);
  EXPECT_TRUE(Eventually([&] { return draining_->Count() == 0; }));
}

TEST_F(Connections, ThatAreClosedAndNotReadHoldLittleTogether) {
  HandleWith(&Connections::AnswerAndClose);
  size_ = 60U << 20;
  const auto first = NewClient("x");
  ASSERT_TRUE(Eventually([this] { return draining_->Count() == 1; }));
  EXPECT_EQ(NewClient("x")->ReceiveAll().size(), size_);
  EXPECT_LT(first->ReceiveAll().size(), size_);
}

TEST_F(Connections, EndTheirHandlersWhichNeverReachTheNextClient) {
  HandleWith(&Connections::Wait);
  const auto first = NewClient("a");
  ASSERT_TRUE(Arrive(1));
  first->Reset();
  ASSERT_TRUE(Eventually([&] { return ended_ == 1; }));

  // Eviction, too: eighteen others, and the twentieth client takes the slot of the second.
  const auto second = NewClient("b");
  const auto third = NewClient("c");
  ASSERT_TRUE(Arrive(3));
  HandleWith(&Connections::AnswerLate);
  std::vector<std::unique_ptr<Client>> others;
  for (int i = 0; i < 18; ++i) others.push_back(NewClient());
  EXPECT_TRUE(second->SeesEnd());
  others.back()->Send("?");
  EXPECT_EQ(others.back()->ReceiveLine(), "mine\r\n");
  OnLoop([&] {
    EXPECT_EQ(ended_, 2);
    slots_->Close();
    EXPECT_EQ(ended_, 3);
  });
}

TEST_F(Connections, SendAHalfClosedClientTheAnswerUnderWay) {
  HandleWith(&Connections::Wait);
  const auto client = NewClient("?");
  ASSERT_TRUE(Arrive(1));
  client->ShutSending();
  ASSERT_TRUE(SlotIs(1, State::kClosing));
  OnLoop([&] { never_.WakeAll(); });
  EXPECT_EQ(client->ReceiveAll(), "mine\r\n");
  EXPECT_TRUE(SlotIs(1, State::kClosed));
}

TEST_F(Connections, AreNotReadWhileTooManyHandlersWait) {
  HandleWith(&Connections::Wait);
  const auto client = NewClient();
  for (std::size_t i = 1; i <= 64; ++i) {
    client->Send("x");
    ASSERT_TRUE(Arrive(i));
  }
  client->Send("yz");
  PassEvents();
  OnLoop([&] {
    EXPECT_EQ(arrivals_.size(), 64U);
    never_.WakeAll();
  });
  EXPECT_TRUE(Arrive(66));
}

TEST_F(Connections, ThatThereIsNoMemoryForAreBrokenOffAndTheOthersServed) {
  HandleWith(&Connections::Throw);
  EXPECT_TRUE(NewClient("x")->SeesEnd());
  PassEvents();
  OnLoop([this] { EXPECT_EQ(errors_.size(), 1U); });
}

TEST_F(Connections, LeaveHeldBackBytesWithTheSenderAndLoseNone) {
  const auto client = NewClient();
  ASSERT_TRUE(SlotIs(1, State::kConnected));
  const auto hold = [this](bool held) {
    OnLoop([&] { (*slots_)[1].Current()->HoldReading(held); });
  };
  hold(true);
  client->Send("early");
  PassEvents();
  EXPECT_TRUE(arrivals_.empty());
  hold(false);
  EXPECT_TRUE(Arrive(5));
  hold(true);
  client->Close();
  EXPECT_TRUE(SlotIs(1, State::kClosed));
}

}  // namespace
