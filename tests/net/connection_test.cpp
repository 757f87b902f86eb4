#include "net/connection.h"

#include <optional>
#include <thread>

#include "net/connection_slots.h"
#include "net/draining_connections.h"
#include "tests/support/server_fixture.h"

namespace {

using net::Connection;
using net::ConnectionSlots;
using test::Client;
using Arrival = std::shared_ptr<Connection>;

// An engine whose one behaviour a test names; everything happens on slot 1 upwards.
class Scripted : public net::SlotEngine {
 public:
  enum class Behaviour {
    kRecord,
    kAnswerBig,
    kCloseUnread,
    kWaitForever,
    kLateWrite,
    kCloseHuge,
    kThrow
  };

  net::Task<> OnDataArrival(int, Arrival connection) override {
    switch (behaviour) {
      case Behaviour::kRecord:
        return Record(connection);
      case Behaviour::kAnswerBig:
        return AnswerBig(connection);
      case Behaviour::kCloseUnread:
        return CloseUnread(connection);
      case Behaviour::kWaitForever:
        return WaitForever(connection);
      case Behaviour::kLateWrite:
        return LateWrite(connection);
      case Behaviour::kCloseHuge:
        return CloseHuge(connection);
      case Behaviour::kThrow:
        throw std::bad_alloc();
    }
    return Record(connection);
  }
  void OnClose(int slot) override { (*slots)[slot].Current()->CloseWhenHandlersEnd(); }
  void OnError(int slot) override { (*slots)[slot].Close(); }

  net::Task<> Record(Arrival connection) {
    arrivals.push_back(connection->GetData());
    co_return;
  }
  net::Task<> AnswerBig(Arrival connection) {
    connection->GetData();
    const std::string piece(100000, 'a');
    for (int i = 0; i < 50; ++i) {
      connection->SendData(piece);
      co_await connection->Sent();
    }
    connection->Close();
  }
  net::Task<> CloseUnread(Arrival connection) {
    connection->SendData(std::string(300000, 'b'));
    connection->Close();
    co_return;
  }
  net::Task<> CloseHuge(Arrival connection) {
    connection->SendData(std::string(kHuge, 'h'));
    connection->Close();
    co_return;
  }
  net::Task<> WaitForever(Arrival connection) {
    arrivals.push_back(connection->GetData());
    try {
      net::WaitList::Awaiter wait = never.Wait();
      co_await wait;
    } catch (const net::HandlerEnded&) {
      ++ended;
      connection->SendData("never seen");
      throw;
    }
  }
  net::Task<> LateWrite(Arrival connection) {
    connection->GetData();
    co_await net::YieldToEvents();
    connection->SendData("mine\r\n");
  }

  static constexpr std::size_t kHuge = 60U << 20;

  Behaviour behaviour = Behaviour::kRecord;
  std::vector<std::string> arrivals;
  int ended = 0;
  net::WaitList never;
  ConnectionSlots* slots = nullptr;
};

class Connections : public test::ProgramFixture {
 protected:
  explicit Connections() {
    OnLoop([this] {
      net::EventLoop& loop = test::TheLoopHost().Loop();
      draining_.emplace(loop);
      context_.emplace(net::SocketContext{
          loop, *draining_, [this](const std::string& error) { errors_.push_back(error); }});
      slots_.emplace(*context_, engine_, ConnectionSlots::BusySlot::kEvict, "");
      engine_.slots = &*slots_;
      std::error_code error;
      slots_->Listen(0, error);
      slots_->CreateSlots();
      port_ = slots_->Listener().LocalPort();
    });
  }
  ~Connections() override {
    OnLoop([this] {
      slots_.reset();
      draining_.reset();
    });
  }
  std::size_t ArrivedBytes() {
    std::size_t bytes = 0;
    for (const std::string& arrival : engine_.arrivals) bytes += arrival.size();
    return bytes;
  }

  Scripted engine_;
  std::vector<std::string> errors_;
  std::optional<net::DrainingConnections> draining_;
  std::optional<net::SocketContext> context_;
  std::optional<ConnectionSlots> slots_;
  std::uint16_t port_ = 0;
};

TEST_F(Connections, DeliverAllPendingBytesAsOneArrival) {
  Client client(port_);
  OnLoop([&] {
    // While the loop is held here, all of it becomes pending, or as much as the system takes.
    client.Send(std::string(150000, 'x'));
  });
  ASSERT_TRUE(Eventually([&] { return ArrivedBytes() == 150000; }));
  OnLoop([&] { EXPECT_LE(engine_.arrivals.size(), 2U); });
}

TEST_F(Connections, ASlowReaderGetsEveryByteThoughTheServerHasClosed) {
  engine_.behaviour = Scripted::Behaviour::kAnswerBig;
  Client client(port_);
  client.Send("?");
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  EXPECT_EQ(client.ReceiveAll().size(), 5000000U);
  EXPECT_FALSE(client.WasReset());
}

TEST_F(Connections, ACloseOverUnreadBytesDoesNotCutTheAnswer) {
  engine_.behaviour = Scripted::Behaviour::kCloseUnread;
  Client client(port_);
  client.Send("first");
  client.Send(std::string(100000, 'z'));
  client.Send(std::string(100000, 'z'));
  EXPECT_EQ(client.ReceiveAll().size(), 300000U);
  EXPECT_FALSE(client.WasReset());
}

TEST_F(Connections, ThatAreClosedAndReadByNobodyAreGivenUp) {
  constexpr std::size_t kMost = 256;
  engine_.behaviour = Scripted::Behaviour::kCloseUnread;
  std::vector<std::unique_ptr<Client>> idle;
  std::size_t served = 0;
  OnLoop([&] { served = context_->traffic.sent; });
  for (std::size_t i = 0; i < kMost + 20; ++i) {
    idle.push_back(std::make_unique<Client>(port_));
    idle.back()->Send("?");
    // An eviction before the answer would be another matter.
    ASSERT_TRUE(Eventually([&] { return context_->traffic.sent == served + 300000 * (i + 1); }));
  }
  OnLoop([&] { EXPECT_EQ(draining_->Count(), kMost); });
  EXPECT_EQ(idle.back()->ReceiveAll().size(), 300000U);
  EXPECT_TRUE(Eventually([&] { return draining_->Count() == 0; }));
}

TEST_F(Connections, ThatAreClosedAndNotReadHoldLittleTogether) {
  OnLoop([this] { engine_.behaviour = Scripted::Behaviour::kCloseHuge; });
  Client first(port_);
  first.Send("x");
  ASSERT_TRUE(Eventually([this] { return draining_->Count() == 1; }));
  Client second(port_);
  second.Send("x");
  EXPECT_EQ(second.ReceiveAll().size(), Scripted::kHuge);
  EXPECT_LT(first.ReceiveAll().size(), Scripted::kHuge);
}

TEST_F(Connections, AHandlerEndsWithItsConnectionAndNeverReachesTheNextOne) {
  engine_.behaviour = Scripted::Behaviour::kWaitForever;
  Client first(port_);
  first.Send("a");
  ASSERT_TRUE(Eventually([&] { return engine_.arrivals.size() == 1; }));
  first.Reset();
  ASSERT_TRUE(Eventually([&] { return engine_.ended == 1; }));

  // Eviction, too: eighteen others and the twentieth client takes the slot of the second.
  Client second(port_);
  second.Send("b");
  ASSERT_TRUE(Eventually([&] { return engine_.arrivals.size() == 2; }));
  std::vector<std::unique_ptr<Client>> others;
  for (int i = 0; i < 19; ++i) others.push_back(std::make_unique<Client>(port_));
  ASSERT_TRUE(Eventually([&] { return engine_.ended == 2; }));
  EXPECT_TRUE(second.SeesEnd());
  EXPECT_EQ(others.back()->ReceiveFor(std::chrono::milliseconds(100)), "");
}

TEST_F(Connections, AStopEndsEveryHandlerBeforeItReturns) {
  engine_.behaviour = Scripted::Behaviour::kWaitForever;
  Client client(port_);
  client.Send("a");
  ASSERT_TRUE(Eventually([&] { return engine_.arrivals.size() == 1; }));
  OnLoop([&] {
    slots_->Close();
    EXPECT_EQ(engine_.ended, 1);
  });
}

TEST_F(Connections, AHalfClosedClientStillGetsTheAnswerUnderWay) {
  engine_.behaviour = Scripted::Behaviour::kLateWrite;
  Client client(port_);
  client.Send("?");
  client.ShutSending();
  EXPECT_EQ(client.ReceiveAll(), "mine\r\n");
  EXPECT_TRUE(Eventually([&] { return (*slots_)[1].IsClosed(); }));
}

TEST_F(Connections, StopReadingWhileTooManyHandlersWait) {
  engine_.behaviour = Scripted::Behaviour::kWaitForever;
  Client client(port_);
  for (int i = 0; i < 64; ++i) {
    client.Send("x");
    const auto wanted = static_cast<std::size_t>(i + 1);
    ASSERT_TRUE(Eventually([&] { return ArrivedBytes() == wanted; }));
  }
  client.Send("y");
  client.Send("z");
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  OnLoop([&] {
    EXPECT_EQ(ArrivedBytes(), engine_.arrivals.size());
    EXPECT_EQ(engine_.arrivals.size(), 64U);
    engine_.never.WakeAll();
  });
  EXPECT_TRUE(Eventually([&] { return ArrivedBytes() == 66; }));
}

TEST_F(Connections, ThatThereIsNoMemoryForAreBrokenOffAndTheOthersServed) {
  OnLoop([this] { engine_.behaviour = Scripted::Behaviour::kThrow; });
  Client unlucky(port_);
  unlucky.Send("x");
  EXPECT_EQ(unlucky.ReceiveAll(), "");
  OnLoop([this] { engine_.behaviour = Scripted::Behaviour::kLateWrite; });
  Client next(port_);
  next.Send("x");
  EXPECT_EQ(next.ReceiveLine(), "mine\r\n");
  OnLoop([this] { EXPECT_EQ(errors_.size(), 1U); });
}

TEST_F(Connections, HeldBackBytesStayWithTheSenderAndAreNotLost) {
  Client client(port_);
  ASSERT_TRUE(Eventually([&] { return !(*slots_)[1].IsClosed(); }));
  OnLoop([&] { (*slots_)[1].Current()->HoldReading(true); });
  client.Send("early");
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  OnLoop([&] {
    EXPECT_TRUE(engine_.arrivals.empty());
    (*slots_)[1].Current()->HoldReading(false);
  });
  EXPECT_TRUE(Eventually([&] { return ArrivedBytes() == 5; }));
  OnLoop([&] { (*slots_)[1].Current()->HoldReading(true); });
  client.Close();
  EXPECT_TRUE(Eventually([&] { return (*slots_)[1].IsClosed(); }));
}

}  // namespace
