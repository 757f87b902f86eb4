// Slots and their connections on sockets, with an engine whose handler each test sets.

#include "net/connection.h"

#include <optional>
#include <random>

#include "net/connection_slots.h"
#include "net/draining_connections.h"
#include "tests/support/server_fixture.h"

namespace {

using net::SocketState;
using net::Task;
using Arrival = std::shared_ptr<net::Connection>;

class Connections : public test::ProgramFixture, protected net::SlotEngine {
 public:
  ~Connections() override {
    OnLoop([this] {
      slots_.reset();
      draining_.reset();
    });
  }

  Task<> Count(int, Arrival connection) {
    ++arrivals_;
    arrivedBytes_ += connection->GetData().size();
    co_return;
  }
  Task<> TellSlotLater(int slot, Arrival connection) {
    co_await net::YieldToEvents();
    connection->SendData(std::to_string(slot) + "\r\n");
  }
  Task<> AnswerAndClose(int, Arrival connection) {
    connection->SendData(std::string(size_ - 2, 'a'));
    for (const char* last : {"b", "c"}) connection->SendData(last);
    connection->Close();
    co_return;
  }
  Task<> Wait(int, Arrival connection) {
    ++arrivals_;
    arrivedBytes_ += connection->GetData().size();
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
  Task<> SendRange(int, Arrival connection) {
    std::error_code error;
    const auto file =
        platform::File::Open(Home().Path("big.bin"), platform::File::Mode::kRead, error);
    try {
      Task<bool> sending = connection->SendFile(file, offset_, size_);
      const bool isWhole = co_await sending;
      ++(isWhole ? sentWhole_ : sentInPart_);
    } catch (const net::HandlerEnded&) {
      ++ended_;
      throw;
    }
    connection->Close();
  }
  Task<> Throw(int, Arrival) { throw std::bad_alloc(); }

 protected:
  using Handler = Task<> (Connections::*)(int slot, Arrival connection);

  Connections() {
    OnLoop([this] {
      draining_.emplace(Environment().loop);
      context_.emplace(
          net::SocketContext{Environment().loop, *draining_, [](const std::string&) {}});
      slots_.emplace(*context_, static_cast<net::SlotEngine&>(*this), "Test",
                     net::ConnectionSlots::BusySlot::kEvict, "");
      std::error_code error;
      slots_->Listen(0, error);
      slots_->CreateSlots();
    });
  }
  void HandleWith(Handler handler) {
    OnLoop([&] { handler_ = handler; });
  }

  // A new client that has sent `bytes`.
  std::unique_ptr<test::Client> NewClient(std::string_view bytes) {
    auto client = std::make_unique<test::Client>(slots_->Listener().LocalPort());
    client->Send(bytes);
    return client;
  }
  // Connects `count` clients; each has been told its slot before the next comes.
  std::string Connect(int count) {
    std::string told;
    for (int i = 0; i < count; ++i) {
      clients_.push_back(NewClient("?"));
      told = clients_.back()->ReceiveLine();
    }
    return told;
  }
  bool SlotIs(int slot, SocketState state) {
    return Eventually([&] { return (*slots_)[slot].State() == state; });
  }
  bool Arrive(std::size_t bytes) {
    return Eventually([&] { return arrivedBytes_ == bytes; });
  }
  // A file without repetitions that no peer's system takes before the peer reads.
  std::string WriteBigFile() {
    std::string content(30'000'000, '\0');
    std::minstd_rand random;
    for (char& byte : content) byte = static_cast<char>(random());
    Home().Write("big.bin", content);
    size_ = content.size();
    HandleWith(&Connections::SendRange);
    return content;
  }
  // A client that does not read while it is sent the file.
  std::unique_ptr<test::Client> StartDownload(int slot) {
    auto client = NewClient("?");
    EXPECT_TRUE(Eventually([&] {
      const auto& connection = (*slots_)[slot].Current();
      return connection && connection->BytesSoFar() > 100'000;
    }));
    return client;
  }
  // Lets the loop serve what was sent before: a new client's round trip.
  void PassEvents() {
    HandleWith(&Connections::TellSlotLater);
    EXPECT_NE(Connect(1), "");
    HandleWith(&Connections::Count);
  }

  Task<> OnDataArrival(int slot, Arrival connection) override {
    return (this->*handler_)(slot, std::move(connection));
  }
  void OnClose(int slot) override { (*slots_)[slot].Current()->CloseWhenHandlersEnd(); }
  void OnError(int slot) override { (*slots_)[slot].Close(); }
  void OnIdle(int slot) override { (*slots_)[slot].Close(net::ActivityEnd::kIdle); }

  Handler handler_ = &Connections::Count;
  std::size_t size_ = 0;
  std::size_t offset_ = 0;
  int arrivals_ = 0;
  std::size_t arrivedBytes_ = 0;
  int ended_ = 0;
  int sentWhole_ = 0;
  int sentInPart_ = 0;
  net::WaitList never_;
  std::optional<net::DrainingConnections> draining_;
  std::optional<net::SocketContext> context_;
  std::optional<net::ConnectionSlots> slots_;
  std::vector<std::unique_ptr<test::Client>> clients_;
};

TEST_F(Connections, GetTheSlotsInTurnAndTheTwentiethEvictsTheFirst) {
  HandleWith(&Connections::TellSlotLater);
  EXPECT_EQ(Connect(1), "1\r\n");
  EXPECT_EQ(Connect(18), "19\r\n");
  // The turn decides, even while other slots are free.
  clients_[4]->Close();
  ASSERT_TRUE(SlotIs(5, SocketState::kClosed));
  EXPECT_EQ(Connect(1), "1\r\n");
  EXPECT_TRUE(clients_[0]->SeesEnd());
  clients_[1]->Send("?");
  EXPECT_EQ(clients_[1]->ReceiveLine(), "2\r\n");
}

TEST_F(Connections, DeliverAllPendingBytesAsOneArrival) {
  const auto client = NewClient("");
  // While this holds the loop, all of it becomes pending, or as much as the system takes.
  OnLoop([&] { client->Send(std::string(150000, 'x')); });
  ASSERT_TRUE(Arrive(150000));
  OnLoop([&] { EXPECT_LE(arrivals_, 2); });
}

TEST_F(Connections, ThatAreClosedStillSendASlowReaderEveryByte) {
  HandleWith(&Connections::AnswerAndClose);
  size_ = 20'000'000;
  for (const bool shutsItsSide : {true, false}) {
    const auto client = NewClient("?");
    ASSERT_TRUE(Eventually([&] { return draining_->Count() == 1; }));
    // Nobody reads this, which must not cut the answer. All of it is there before the loop looks:
    // Wine forgets what is to be sent if it waits for a peer that then shuts its side.
    OnLoop([&] {
      client->Send(std::string(200000, 'z'));
      if (shutsItsSide) client->ShutSending();
    });
    const std::string answer = client->ReceiveAll();
    EXPECT_EQ(answer.size(), size_);
    EXPECT_TRUE(answer.ends_with("abc"));
    EXPECT_FALSE(client->WasReset());
    // The end came from the server's shutting its side, not from its giving up.
    OnLoop([&] { EXPECT_EQ(draining_->Count(), shutsItsSide ? 0U : 1U); });
  }
}

TEST_F(Connections, ThatAreClosedAndReadByNobodyAreGivenUp) {
  HandleWith(&Connections::AnswerAndClose);
  size_ = 300000;
  for (std::size_t i = 1; i <= 256 + 20; ++i) {
    clients_.push_back(NewClient("?"));
    // An eviction before the answer would be another matter.
    ASSERT_TRUE(Eventually([&] { return context_->traffic.sent == size_ * i; }));
  }
  OnLoop([&] { EXPECT_EQ(draining_->Count(), 256U); });
  EXPECT_EQ(clients_.back()->ReceiveAll().size(), size_);
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

TEST_F(Connections, SendASlowReaderAFileWholeAndAnswerOthersMeanwhile) {
  const std::string content = WriteBigFile();
  const auto client = StartDownload(1);
  PassEvents();
  OnLoop([&] {
    EXPECT_LT((*slots_)[1].Current()->CurrentActivity().traffic.sent, size_);
    EXPECT_EQ(sentWhole_, 0);
  });
  EXPECT_TRUE(client->ReceiveAll() == content);
  OnLoop([&] { EXPECT_EQ(sentWhole_, 1); });
}

TEST_F(Connections, SendAnyRangeOfAFile) {
  const std::string content = WriteBigFile();
  for (const auto& [offset, size] : std::vector<std::pair<std::size_t, std::size_t>>{
           {0, 0}, {0, 1}, {7, 16385}, {12345, 600'000}, {content.size() - 70'000, 70'000}}) {
    offset_ = offset;
    size_ = size;
    EXPECT_TRUE(NewClient("?")->ReceiveAll() == content.substr(offset, size)) << offset;
  }
  OnLoop([&] { EXPECT_EQ(sentInPart_, 0); });
}

TEST_F(Connections, ReportAFileThatEndsEarly) {
  const std::string content = WriteBigFile();
  for (const std::size_t missing : {1U, 100'000U}) {
    offset_ = content.size() - 15'000;
    size_ = 15'000 + missing;
    EXPECT_TRUE(NewClient("?")->ReceiveAll() == content.substr(offset_)) << missing;
  }
  EXPECT_EQ(sentInPart_, 2);

  offset_ = 0;
  size_ = content.size();
  const auto first = StartDownload(3);
  const auto second = StartDownload(4);
  std::error_code error;
  std::filesystem::resize_file(Home().Path("big.bin"), 20'000'000, error);
  if (error) GTEST_SKIP() << "an open file cannot be changed here: " << error.message();
  EXPECT_TRUE(second->ReceiveAll() == content.substr(0, 20'000'000));
  EXPECT_TRUE(first->ReceiveAll() == content.substr(0, 20'000'000));
  EXPECT_EQ(sentInPart_, 4);
}

TEST_F(Connections, EndTheSendingOfAFileWithThem) {
  WriteBigFile();
  StartDownload(1)->Reset();
  EXPECT_TRUE(Eventually([&] { return ended_ == 1; }));
  const auto evicted = StartDownload(2);
  StartDownload(3)->Reset();
  EXPECT_TRUE(Eventually([&] { return ended_ == 2; }));
  OnLoop([&] { (*slots_)[2].Close(net::ActivityEnd::kEvicted); });
  EXPECT_LT(evicted->ReceiveAll().size(), size_);
  EXPECT_EQ(ended_, 3);
}

TEST_F(Connections, EndTheirHandlersWhichNeverReachTheNextClient) {
  HandleWith(&Connections::Wait);
  const auto first = NewClient("a");
  ASSERT_TRUE(Arrive(1));
  first->Reset();
  ASSERT_TRUE(Eventually([&] { return ended_ == 1; }));

  // Eviction, too: the twentieth client gets the slot of the second.
  const auto second = NewClient("b");
  ASSERT_TRUE(Arrive(2));
  HandleWith(&Connections::TellSlotLater);
  EXPECT_EQ(Connect(19), "2\r\n");
  EXPECT_TRUE(second->SeesEnd());
  OnLoop([&] { EXPECT_EQ(ended_, 2); });
}

TEST_F(Connections, SendAHalfClosedClientTheAnswersUnderWay) {
  HandleWith(&Connections::Wait);
  const auto client = NewClient("?");
  ASSERT_TRUE(Arrive(1));
  client->Send("?");
  ASSERT_TRUE(Arrive(2));
  client->ShutSending();
  ASSERT_TRUE(SlotIs(1, SocketState::kClosing));
  OnLoop([&] { never_.WakeAll(); });
  EXPECT_EQ(client->ReceiveAll(), "mine\r\nmine\r\n");
}

TEST_F(Connections, AreNotReadWhileTooManyHandlersWait) {
  HandleWith(&Connections::Wait);
  const auto client = NewClient("");
  for (std::size_t i = 1; i <= 64; ++i) {
    client->Send("x");
    ASSERT_TRUE(Arrive(i));
  }
  client->Send("yz");
  PassEvents();
  OnLoop([&] {
    EXPECT_EQ(arrivals_, 64);
    never_.WakeAll();
  });
  EXPECT_TRUE(Arrive(66));
}

TEST_F(Connections, ThatThereIsNoMemoryForAreBrokenOffAndTheOthersServed) {
  HandleWith(&Connections::Throw);
  EXPECT_TRUE(NewClient("x")->SeesEnd());
  PassEvents();
}

TEST_F(Connections, LeaveHeldBackBytesWithTheSenderAndLoseNone) {
  const auto client = NewClient("");
  ASSERT_TRUE(SlotIs(1, SocketState::kConnected));
  const auto hold = [this](bool held) {
    OnLoop([&] { (*slots_)[1].Current()->HoldReading(held); });
  };
  hold(true);
  client->Send("early");
  PassEvents();
  EXPECT_EQ(arrivals_, 0);
  hold(false);
  EXPECT_TRUE(Arrive(5));
  hold(true);
  client->Close();
  EXPECT_TRUE(SlotIs(1, SocketState::kClosed));
}

TEST_F(Connections, ThatAreIdleForTooLongAreClosedButNotWhileTheyWork) {
  OnLoop([this] {
    context_->idleLimit = [] { return std::chrono::milliseconds(200); };
    handler_ = &Connections::Wait;
  });
  const auto working = NewClient("?");
  ASSERT_TRUE(Arrive(1));
  HandleWith(&Connections::Count);
  const auto talking = NewClient("!");
  const auto idle = NewClient("");
  EXPECT_TRUE(Eventually([&] {
    talking->Send("!");
    return (*slots_)[3].IsClosed();
  }));
  EXPECT_TRUE(SlotIs(1, SocketState::kConnected) && SlotIs(2, SocketState::kConnected));
}

}  // namespace
