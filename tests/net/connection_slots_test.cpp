#include "net/connection_slots.h"

#include "tests/net/slots_fixture.h"

namespace {

using test::Client;

class Slots : public test::SlotsFixture {
 protected:
  Slots() { onArrival_ = TellSlot; }

  static net::Task<> TellSlot(int slot, Arrival connection) {
    connection->SendData(std::to_string(slot) + "\r\n");
    co_return;
  }

  // Connects `count` clients one after another; each has got its line before the next comes.
  std::vector<std::string> Connect(int count, std::string_view question = "?") {
    std::vector<std::string> lines;
    for (int i = 0; i < count; ++i) {
      clients_.push_back(NewClient(question));
      lines.push_back(clients_.back()->ReceiveLine());
    }
    return lines;
  }
  static std::string Ask(Client& client) {
    client.Send("?");
    return client.ReceiveLine();
  }

  std::vector<std::unique_ptr<Client>> clients_;
};

TEST_F(Slots, AreHandedOutInTurnAndTheTwentiethClientEvictsTheFirst) {
  Open(BusySlot::kEvict);
  EXPECT_EQ(Connect(1).back(), "1\r\n");
  EXPECT_EQ(Connect(18).back(), "19\r\n");
  // The turn decides, even while other slots are free.
  clients_[4]->Close();
  ASSERT_TRUE(SlotIs(5, State::kClosed));
  EXPECT_EQ(Connect(1).back(), "1\r\n");
  EXPECT_TRUE(clients_[0]->SeesEnd());
  EXPECT_EQ(Ask(*clients_[1]), "2\r\n");
}

TEST_F(Slots, WithABusyRuleRefuseWithoutGreetingAndUseUpTheTurn) {
  Open(BusySlot::kRefuse, "hello\r\n");
  EXPECT_EQ(Connect(19, ""), std::vector<std::string>(19, "hello\r\n"));
  clients_[1]->Close();
  ASSERT_TRUE(SlotIs(2, State::kClosed));
  EXPECT_EQ(NewClient()->ReceiveAll(), "");
  EXPECT_EQ(Connect(1, "").back(), "hello\r\n");
  EXPECT_EQ(Ask(*clients_.back()), "2\r\n");
  EXPECT_EQ(Ask(*clients_[0]), "1\r\n");
}

TEST_F(Slots, BeginWithTheFirstAgainAfterARestartAndAStopClosesEveryone) {
  Open(BusySlot::kEvict, "hi\r\n");
  EXPECT_EQ(Connect(1, "").back(), "hi\r\n");
  const std::uint16_t port = slots_->Listener().LocalPort();
  OnLoop([this] { slots_->Close(); });
  EXPECT_TRUE(clients_[0]->SeesEnd());
  EXPECT_FALSE(test::Accepts(port));
  OnLoop([this] { Listen(); });
  EXPECT_EQ(Connect(1, "").back(), "hi\r\n");
  EXPECT_EQ(Ask(*clients_.back()), "1\r\n");
}

TEST_F(Slots, ATakenPortIsReported) {
  Open(BusySlot::kEvict);
  OnLoop([&] {
    net::ConnectionSlots other(*context_, *this, BusySlot::kEvict, "");
    std::error_code error;
    // Through the listener, since a port that the system chooses may not fit into 16 signed bits.
    other.Listener().Listen(slots_->Listener().LocalPort(), error);
    EXPECT_TRUE(error);
    EXPECT_FALSE(other.IsListening());
    other.Listen(-1, error);
    EXPECT_TRUE(error);
  });
}

TEST_F(Slots, SurviveThousandsOfConnectionsOfEveryKind) {
  Open(BusySlot::kEvict);
  for (int i = 0; i < 2000; ++i) {
    const auto client = NewClient(i % 3 == 0 ? "unexpected bytes" : "");
    if (i % 4 == 0) client->Reset();
    if (i % 4 == 1) client->ShutSending();
  }
  EXPECT_THAT(Connect(1).back(), testing::EndsWith("\r\n"));
  EXPECT_TRUE(Eventually([&] { return draining_->Count() <= 20; }));
}

}  // namespace
