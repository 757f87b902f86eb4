#include "net/connection_slots.h"

#include <optional>
#include <vector>

#include "net/draining_connections.h"
#include "tests/support/server_fixture.h"

namespace {

using net::ConnectionSlots;
using test::Client;

// An engine that answers every arrival with the number of its slot.
class SlotTeller : public net::SlotEngine {
 public:
  net::Task<> OnDataArrival(int slot, std::shared_ptr<net::Connection> connection) override {
    connection->GetData();
    connection->SendData(std::to_string(slot) + "\r\n");
    co_return;
  }
  void OnClose(int slot) override { (*slots)[slot].Close(); }
  void OnError(int slot) override { (*slots)[slot].Close(); }

  ConnectionSlots* slots = nullptr;
};

class Slots : public test::ProgramFixture {
 protected:
  ~Slots() override {
    OnLoop([this] {
      slots_.reset();
      draining_.reset();
    });
  }

  void Open(ConnectionSlots::BusySlot busySlot, const std::string& greeting = "") {
    OnLoop([&] {
      if (!slots_) {
        net::EventLoop& loop = test::TheLoopHost().Loop();
        draining_.emplace(loop);
        context_.emplace(net::SocketContext{loop, *draining_, [](const std::string&) {}});
        slots_.emplace(*context_, teller_, busySlot, greeting);
        teller_.slots = &*slots_;
      }
      std::error_code error;
      slots_->Listen(0, error);
      slots_->CreateSlots();
      port_ = slots_->Listener().LocalPort();
    });
  }
  void Close() {
    OnLoop([this] { slots_->Close(); });
  }

  // Connects `count` clients one after another; each is served before the next comes.
  std::vector<std::string> Connect(int count) {
    std::vector<std::string> answers;
    for (int i = 0; i < count; ++i) {
      clients_.push_back(std::make_unique<Client>(port_));
      answers.push_back(Ask(*clients_.back()));
    }
    return answers;
  }
  static std::string Ask(Client& client) {
    client.Send("?");
    return client.ReceiveLine();
  }
  bool SlotBecomesFree(int slot) {
    return Eventually([&] { return (*slots_)[slot].IsClosed(); });
  }

  SlotTeller teller_;
  std::optional<net::DrainingConnections> draining_;
  std::optional<net::SocketContext> context_;
  std::optional<ConnectionSlots> slots_;
  std::uint16_t port_ = 0;
  std::vector<std::unique_ptr<Client>> clients_;
};

TEST_F(Slots, AreHandedOutInTurnAndTheTwentiethClientEvictsTheFirst) {
  Open(ConnectionSlots::BusySlot::kEvict);
  EXPECT_EQ(Connect(1).back(), "1\r\n");
  EXPECT_EQ(Connect(18).back(), "19\r\n");
  // That slots are free does not matter: the turn does.
  clients_[4]->Close();
  ASSERT_TRUE(SlotBecomesFree(5));
  EXPECT_EQ(Connect(1).back(), "1\r\n");
  EXPECT_TRUE(clients_[0]->SeesEnd());
  EXPECT_EQ(Ask(*clients_[1]), "2\r\n");
}

TEST_F(Slots, WithABusyRuleRefuseWithoutGreetingAndUseUpTheTurn) {
  Open(ConnectionSlots::BusySlot::kRefuse, "hello\r\n");
  for (int i = 0; i < 19; ++i) {
    clients_.push_back(std::make_unique<Client>(port_));
    EXPECT_EQ(clients_.back()->ReceiveLine(), "hello\r\n");
  }
  clients_[1]->Close();
  ASSERT_TRUE(SlotBecomesFree(2));
  Client refused(port_);
  EXPECT_EQ(refused.ReceiveAll(), "");
  Client second(port_);
  EXPECT_EQ(second.ReceiveLine(), "hello\r\n");
  EXPECT_EQ(Ask(second), "2\r\n");
  EXPECT_EQ(Ask(*clients_[0]), "1\r\n");
}

TEST_F(Slots, BeginWithTheFirstAgainAfterARestartAndAStopClosesEveryone) {
  Open(ConnectionSlots::BusySlot::kEvict, "hi\r\n");
  clients_.push_back(std::make_unique<Client>(port_));
  EXPECT_EQ(clients_[0]->ReceiveLine(), "hi\r\n");
  Close();
  EXPECT_TRUE(clients_[0]->SeesEnd());
  EXPECT_FALSE(test::Accepts(port_));
  Open(ConnectionSlots::BusySlot::kEvict);
  Client again(port_);
  EXPECT_EQ(again.ReceiveLine(), "hi\r\n");
  EXPECT_EQ(Ask(again), "1\r\n");
}

TEST_F(Slots, ATakenPortIsReported) {
  Open(ConnectionSlots::BusySlot::kEvict);
  OnLoop([&] {
    ConnectionSlots other(*context_, teller_, ConnectionSlots::BusySlot::kEvict, "");
    std::error_code error;
    // Ports that the system chooses may be beyond 16 bits with a sign; the listener itself takes
    // any.
    other.Listener().Listen(port_, error);
    EXPECT_TRUE(error);
    EXPECT_FALSE(other.IsListening());
    other.Listen(-1, error);
    EXPECT_TRUE(error);
  });
}

TEST_F(Slots, SurviveThousandsOfConnectionsOfEveryKind) {
  Open(ConnectionSlots::BusySlot::kEvict);
  for (int i = 0; i < 2000; ++i) {
    Client client(port_);
    if (i % 3 == 0) client.Send("some bytes that nobody asked for");
    if (i % 4 == 0) client.Reset();
    if (i % 4 == 1) client.ShutSending();
  }
  Client last(port_);
  last.Send("?");
  EXPECT_THAT(last.ReceiveLine(), testing::EndsWith("\r\n"));
  EXPECT_TRUE(Eventually([&] { return draining_->Count() <= 20; }));
}

}  // namespace
