// Data connections both ways, listings, downloads and uploads.

#include <algorithm>
#include <asio/ip/tcp.hpp>
#include <filesystem>
#include <random>

#include "core/wildcards.h"
#include "platform/directory.h"
#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

constexpr const char* kSending = "150 Opening ASCII mode data connection for /bin/ls.\r\n";
constexpr const char* kReceiving = "150 数据连接已经打开，可以发送数据.\r\n";
constexpr const char* kListed = "226 Transfer complete.\r\n";
constexpr const char* kStored = "226 stor command completed\r\n";
constexpr const char* kRefused = "550 无访问权，不能上传文件！ \r\n";

// A client's own listener, for active mode. Its port fits what PORT can say.
class ActiveClient {
 public:
  ActiveClient() {
    using asio::ip::tcp;
    asio::error_code error = asio::error::address_in_use;
    for (port_ = 20000 + std::random_device()() % 8000; error && port_ < 32768; ++port_) {
      acceptor_ = tcp::acceptor(context_);
      acceptor_.open(tcp::v4());
      acceptor_.bind({asio::ip::address_v4::loopback(), port_}, error);
      if (!error) break;
    }
    acceptor_.listen();
  }

  /// PORT's argument.
  std::string Argument() const {
    return "127,0,0,1," + std::to_string(port_ / 256) + "," + std::to_string(port_ % 256);
  }

  /// Everything that comes on the next connection; `from` is told its port at the server.
  std::string ReceiveAll(std::uint16_t& from) {
    asio::ip::tcp::socket socket = acceptor_.accept();
    from = socket.remote_endpoint().port();
    std::string bytes;
    std::array<char, 4096> buffer;
    asio::error_code error;
    while (!error) {
      const std::size_t count = socket.read_some(asio::buffer(buffer), error);
      bytes.append(buffer.data(), count);
    }
    return bytes;
  }

 private:
  asio::io_context context_;
  asio::ip::tcp::acceptor acceptor_{context_};
  std::uint16_t port_ = 0;
};

// Bytes that show it if a piece is missing, doubled or out of place.
std::string Content(std::size_t size) {
  std::string content(size, '\0');
  std::uint32_t state = 1;
  for (char& c : content) c = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
  return content;
}

using FtpTransfersTest = FtpServerTest;

TEST_F(FtpTransfersTest, PasvNamesAPortOfItsRange) {
  FtpClient client = Connect();
  for (int i = 0; i < 20; ++i) {
    const std::string reply = client.Ask("PASV");
    EXPECT_TRUE(core::MatchesWildcard(reply, "227 (127,0,0,1,4,*).\r\n")) << reply;
    EXPECT_LE(FtpClient::PortOf(reply), 1279);
    EXPECT_TRUE(Client(FtpClient::PortOf(reply)).IsConnected());
  }
}

TEST_F(FtpTransfersTest, RetrievesFilesOfEveryLengthWhole) {
  FtpClient client = Connect();
  client.Ask("PWD");
  for (const std::size_t size : {0, 1, 4095, 4096, 4097, 8192, 8193, 3000000}) {
    const std::string content = Content(size);
    Put("file.bin", content);
    const Transferred transferred = client.Fetch("RETR file.bin");
    EXPECT_EQ(transferred.before, kSending);
    EXPECT_TRUE(transferred.bytes == content) << size << ": " << transferred.bytes.size();
    EXPECT_EQ(transferred.after, "226 \r\n");
  }
}

TEST_F(FtpTransfersTest, AMissingFileGetsItsDataConnectionClosed) {
  FtpClient client = Connect();
  for (const char* line : {"RETR /missing", "RETR /up", "RETR"}) {
    const Transferred transferred = client.Fetch(line);
    EXPECT_EQ(transferred.before, kSending) << line;
    EXPECT_EQ(transferred.bytes, "") << line;
    EXPECT_EQ(transferred.after, "426 \r\n") << line;
  }
}

TEST_F(FtpTransfersTest, ListsVisibleEntriesInOrder) {
  Put("b.txt", "12345");
  Put("A.txt", "");
  Put("up/inner/c.txt", "123");
  Put("up/d.txt", "1234");
  FtpClient client = Connect();
  client.Ask("PWD");
  const Transferred listed = client.Fetch("LIST");
  EXPECT_EQ(listed.before, kSending);
  EXPECT_TRUE(core::MatchesWildcard(listed.bytes,
                                    "-r-xr-xr-x  1 owner group   0 ??? ?? ???? A.txt\r\n"
                                    "-r-xr-xr-x  1 owner group   5 ??? ?? ???? b.txt\r\n"
                                    "dr-xr-xr-x  1 owner group   7 ??? ?? ???? up\r\n"))
      << listed.bytes;
  EXPECT_EQ(listed.after, kListed);
  // What follows the word is not looked at.
  EXPECT_EQ(client.Fetch("LIST -la up").bytes, listed.bytes);
}

TEST_F(FtpTransfersTest, HiddenEntriesAreLeftOut) {
  Put(".hidden", "x");
  Put("shown", "x");
  std::error_code error;
  if (!platform::ListDirectory(Home().Path("ftproot"), error).front().isHidden) {
    GTEST_SKIP() << "a dot hides nothing here";
  }
  FtpClient client = Connect();
  client.Ask("PWD");
  const std::string listed = client.Fetch("LIST").bytes;
  EXPECT_THAT(listed, testing::HasSubstr(" shown\r\n"));
  EXPECT_THAT(listed, testing::Not(testing::HasSubstr("hidden")));
}

TEST_F(FtpTransfersTest, AnEmptyFolderIsListedAndAMissingOneFails) {
  FtpClient client = Connect();
  client.Ask("CWD /up");
  Transferred listed = client.Fetch("LIST");
  EXPECT_EQ(listed.before, kSending);
  EXPECT_EQ(listed.bytes, "");
  EXPECT_EQ(listed.after, kListed);
  client.Ask("CWD /missing");
  listed = client.Fetch("LIST");
  EXPECT_EQ(listed.before, kSending);
  EXPECT_EQ(listed.bytes, "");
  EXPECT_EQ(listed.after, "451 \r\n");
}

TEST_F(FtpTransfersTest, OneEntryThatCannotBeLookedAtSpoilsTheListing) {
  Put("a.txt", "x");
  std::error_code error;
  std::filesystem::create_symlink("nowhere", Home().Path("ftproot/b.txt"), error);
  if (error) GTEST_SKIP() << "no links here: " << error.message();
  FtpClient client = Connect();
  client.Ask("PWD");
  const Transferred listed = client.Fetch("LIST");
  EXPECT_EQ(listed.bytes, "");
  EXPECT_EQ(listed.after, "451 \r\n");
}

TEST_F(FtpTransfersTest, WithoutADirectoryTheRootOfTheDriveIsMeant) {
  Put("x.txt", "here");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(Home().Native());  // the drive is that of the current directory
  FtpClient client = Connect();
  const std::string name = Home().Path("ftproot/x.txt").relative_path().generic_string();
  EXPECT_EQ(client.Fetch("RETR " + name).bytes, "here");
  client.Ask("CWD " + Home().Path("ftproot").relative_path().generic_string());
  EXPECT_THAT(client.Fetch("LIST").bytes, testing::HasSubstr(" x.txt\r\n"));
  std::filesystem::current_path(before);
}

TEST_F(FtpTransfersTest, StoresWhatComesUpToTheEndOfTheDataConnection) {
  FtpClient client = Connect();
  client.Ask("CWD /up");
  const std::string content = Content(3000000);
  const Transferred stored = client.Store("new.bin", content);
  EXPECT_EQ(stored.before, kReceiving);
  EXPECT_EQ(stored.after, kStored);
  EXPECT_TRUE(File("up/new.bin") == content);
}

TEST_F(FtpTransfersTest, AnUploadIsWrittenOverTheOldFileAndLeavesItsTail) {
  FtpClient client = Connect();
  client.Ask("CWD /up");
  Put("up/Old.txt", "0123456789");
  EXPECT_EQ(client.Store("Old.txt", "abc").after, kStored);
  EXPECT_EQ(File("up/Old.txt"), "abc3456789");
  EXPECT_EQ(client.Store("OLD.TXT", "x").after, kStored);  // the same file in any case
  EXPECT_EQ(File("up/Old.txt"), "xbc3456789");
  EXPECT_EQ(client.Store("Old.txt", "").after, kStored);
  EXPECT_EQ(File("up/Old.txt"), "xbc3456789");
  EXPECT_EQ(client.Store("nothing.txt", "").after, kStored);
  EXPECT_FALSE(Has("up/nothing.txt"));
}

TEST_F(FtpTransfersTest, ARefusedUploadWaitsForItsDataConnectionAndWritesNothing) {
  FtpClient client = Connect();
  client.Ask("PWD");
  const std::string reply = client.Ask("PASV");
  client.Tell("STOR x.txt");
  EXPECT_TRUE(client.HearsNothing());
  Client data(FtpClient::PortOf(reply));
  data.Send("bytes");
  EXPECT_EQ(client.Reply(), kRefused);
  EXPECT_TRUE(data.SeesEnd());
  EXPECT_FALSE(Has("x.txt"));
  // "/" means nothing special: the name is below the current directory.
  EXPECT_EQ(client.Store("/up/x.txt", "bytes").after, kRefused);
  EXPECT_EQ(client.Store("up\\x.txt", "bytes").after, kStored);
}

TEST_F(FtpTransfersTest, BytesSentBeforeTheUploadIsAcceptedAreNotLost) {
  FtpClient client = Connect();
  client.Ask("CWD /up");
  const std::string content = Content(200000);
  const auto data = client.OpenPassive();
  data->Send(content);
  data->Close();
  EXPECT_TRUE(client.HearsNothing());
  EXPECT_EQ(client.Ask("STOR early.bin"), kReceiving);
  EXPECT_EQ(client.Reply(), kStored);
  EXPECT_TRUE(File("up/early.bin") == content);
}

TEST_F(FtpTransfersTest, TheUploadCountIsResetByStorAndSharedByAll) {
  FtpClient one = Connect();
  one.Ask("CWD /up");
  one.Store("a", "12345");
  OnLoop([&] { EXPECT_EQ(TheServer().State().uploadByteCount, 5); });
  FtpClient two = Connect();
  two.Ask("CWD /up");
  two.Store("b", "");
  OnLoop([&] { EXPECT_EQ(TheServer().State().uploadByteCount, 0); });
}

TEST_F(FtpTransfersTest, ActiveModeConnectsFromTheFirstPortNumberPlusTheSlot) {
  Put("a.txt", "hello");
  FtpClient client = Connect();
  ActiveClient active;
  client.Ask("PWD");
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(client.Ask("PORT " + active.Argument()), "200 \r\n");
    client.Tell("RETR /a.txt");
    std::uint16_t from = 0;
    EXPECT_EQ(active.ReceiveAll(from), "hello");
    EXPECT_EQ(client.Reply(), kSending);
    EXPECT_EQ(client.Reply(), "226 \r\n");
  }
  OnLoop([&] { EXPECT_EQ(TheServer().State().pendingDataSlot, 1); });
}

TEST_F(FtpTransfersTest, PortFailsBeyondSixteenBitsAndWhileADataConnectionStands) {
  FtpClient client = Connect();
  FtpClient other = Connect();
  other.Ask("PASV");
  for (const char* argument : {"127,0,0,1,200,10", "127,0,0,1,128,0", "nonsense", "1,2,3", "",
                               "127,0,0,1,a,1", "127,0,0,1,4,b", "1270,0,0,1,4,1"}) {
    EXPECT_EQ(client.Ask(std::string("PORT ") + argument), "530 暂时无法连接.\r\n") << argument;
  }
  OnLoop([&] { EXPECT_EQ(TheServer().State().pendingDataSlot, 2); });  // a refusal claims nothing
  const auto data = client.OpenPassive();
  ASSERT_TRUE(Eventually([&] { return TheServer().State().pendingDataSlot == 1; }));
  client.Ask("NOOP");
  ActiveClient active;
  EXPECT_EQ(client.Ask("PORT " + active.Argument()), "530 暂时无法连接.\r\n");
  data->Close();
  std::string reply;
  for (int i = 0; i < 100 && reply != "200 \r\n"; ++i) {
    reply = client.Ask("PORT " + active.Argument());
  }
  EXPECT_EQ(reply, "200 \r\n");  // that it has gone is noticed
}

TEST_F(FtpTransfersTest, APassiveConnectionGoesToWhoeverAskedLast) {
  Put("a.txt", "for two");
  FtpClient one = Connect();
  FtpClient two = Connect();
  const std::uint16_t stale = FtpClient::PortOf(one.Ask("PASV"));
  const std::string reply = two.Ask("PASV");
  Client data(FtpClient::PortOf(reply));
  one.Tell("RETR /a.txt");
  EXPECT_TRUE(one.HearsNothing());
  EXPECT_EQ(two.Ask("RETR /a.txt"), kSending);
  EXPECT_EQ(data.ReceiveAll(), "for two");
  if (stale != FtpClient::PortOf(reply)) {
    EXPECT_FALSE(Accepts(stale));
  }
}

TEST_F(FtpTransfersTest, ASecondPassiveConnectionReplacesTheFirst) {
  Put("a.txt", "hello");
  FtpClient client = Connect();
  const std::uint16_t port = FtpClient::PortOf(client.Ask("PASV"));
  Client first(port);
  Client second(port);
  EXPECT_TRUE(first.SeesEnd());
  client.Tell("RETR /a.txt");
  EXPECT_EQ(second.ReceiveAll(), "hello");
  // The listener stays open after an accept, and after QUIT.
  client.Ask("NOOP");
  client.Ask("QUIT");
  EXPECT_TRUE(Accepts(port));
}

TEST_F(FtpTransfersTest, HundredsOfDataConnectionsReuseTheSamePorts) {
  Put("a.txt", "hello");
  FtpClient client = Connect();
  client.Ask("PWD");
  ActiveClient active;
  for (int i = 0; i < 300; ++i) {
    ASSERT_EQ(client.Fetch("RETR a.txt").bytes, "hello") << i;
    ASSERT_EQ(client.Ask("PORT " + active.Argument()), "200 \r\n") << i;
    client.Tell("RETR a.txt");
    std::uint16_t from = 0;
    ASSERT_EQ(active.ReceiveAll(from), "hello") << i;
    client.Reply();
    ASSERT_EQ(client.Reply(), "226 \r\n") << i;
  }
}

TEST_F(FtpTransfersTest, ALineWithoutAWordTurnsTheReplyAndNotTheTransfer) {
  const std::string content = Content(30000000);
  Put("big.bin", content);
  FtpClient client = Connect();
  FtpClient other = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  other.TellRaw("\r\n");
  ASSERT_TRUE(Eventually([&] { return TheServer().State().abortRequested; }));
  EXPECT_TRUE(data->ReceiveAll() == content);
  EXPECT_EQ(client.Reply(), "426 \r\n");
  EXPECT_EQ(client.Fetch("RETR /missing").after, "426 \r\n");
  Put("small.txt", "x");
  EXPECT_EQ(client.Fetch("RETR /small.txt").after, "226 \r\n");
}

TEST_F(FtpTransfersTest, CommandsAreServedWhileATransferStands) {
  Put("big.bin", Content(30000000));
  FtpClient client = Connect();
  FtpClient other = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  EXPECT_EQ(client.Ask("NOOP"), "200 \r\n");
  EXPECT_EQ(client.Ask("PWD"), "257 \"/\" command successful. \r\n");
  EXPECT_EQ(other.Ask("NOOP"), "200 \r\n");
  EXPECT_EQ(data->ReceiveAll().size(), 30000000U);
  EXPECT_EQ(client.Reply(), "226 \r\n");
}

TEST_F(FtpTransfersTest, QuitEndsTheDataConnectionsOfAllSessions) {
  Put("big.bin", Content(30000000));
  FtpClient client = Connect();
  FtpClient other = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  EXPECT_EQ(other.Ask("QUIT"), "221 再见\r\n");
  EXPECT_LT(data->ReceiveAll().size(), 30000000U);
  EXPECT_EQ(client.Reply(), "226 \r\n");
  EXPECT_EQ(other.Ask("NOOP"), "200 \r\n");
}

TEST_F(FtpTransfersTest, ANewPasvEndsTheTransferThatStands) {
  Put("big.bin", Content(30000000));
  Put("small.txt", "small");
  FtpClient client = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  Client next(FtpClient::PortOf(client.Ask("PASV")));
  EXPECT_EQ(client.Reply(), "226 \r\n");
  EXPECT_EQ(client.Ask("RETR /small.txt"), kSending);
  EXPECT_EQ(next.ReceiveAll(), "small");
  EXPECT_EQ(client.Reply(), "226 \r\n");
}

TEST_F(FtpTransfersTest, OfSeveralThatWaitTheNewestCommandGetsTheDataConnection) {
  Put("a.txt", "hello");
  FtpClient client = Connect();
  client.Ask("PWD");
  for (const char* line : {"RETR a.txt", "LIST"}) {
    client.Tell(line);
    EXPECT_TRUE(client.HearsNothing());
  }
  const auto first = client.OpenPassive();
  EXPECT_EQ(client.Reply(), kSending);
  EXPECT_THAT(first->ReceiveAll(), testing::HasSubstr("a.txt\r\n"));
  EXPECT_EQ(client.Reply(), kListed);
  const auto second = client.OpenPassive();
  EXPECT_EQ(client.Reply(), kSending);
  EXPECT_EQ(second->ReceiveAll(), "hello");
  EXPECT_EQ(client.Reply(), "226 \r\n");
}

TEST_F(FtpTransfersTest, ACommandDuringATransferWaitsForTheNextDataConnection) {
  const std::string content = Content(30000000);
  Put("big.bin", content);
  FtpClient client = Connect();
  client.Ask("PWD");
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR big.bin"), kSending);
  client.Tell("LIST");
  EXPECT_TRUE(client.HearsNothing());
  EXPECT_TRUE(data->ReceiveAll() == content);
  EXPECT_EQ(client.Reply(), "226 \r\n");
  const auto next = client.OpenPassive();
  EXPECT_EQ(client.Reply(), kSending);
  EXPECT_THAT(next->ReceiveAll(), testing::HasSubstr("big.bin\r\n"));
  EXPECT_EQ(client.Reply(), kListed);
}

}  // namespace
}  // namespace test
