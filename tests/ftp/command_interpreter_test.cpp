// The commands without a socket: what is sent and what is answered.

#include "ftp/command_interpreter.h"

#include <filesystem>
#include <stdexcept>

#include "net/handler_scope.h"
#include "tests/support/server_fixture.h"

namespace ModFtp {
namespace {

using net::Task;

constexpr const char* kDirectorySet = "250 CWD command success.\r\n";
constexpr const char* kAtRoot = "257 \"/\" command successful. \r\n";
constexpr const char* kStorFailed = "550 无访问权，不能上传文件！ \r\n";

// Records what the interpreter asks for, in order.
class FakeHost final : public CommandInterpreter::Host {
 public:
  explicit FakeHost(FtpSessions& sessions) : sessions_(sessions) {}

  std::string shown;
  std::string calls;
  bool opens = true;
  bool throws = false;
  std::function<void()> duringTransfer = [] {};

 private:
  Task<bool> Open(int slot, std::string call) {
    calls += call + " ";
    if (throws) throw std::runtime_error("a fault in " + call);
    sessions_[slot].transfer = std::make_shared<Transfer>();
    sessions_[slot].closeAfterSend = true;
    co_return bool{opens};
  }

  void ShowCommand(int, std::string_view what) override { shown = what; }
  Task<bool> OpenActiveDataConnection(int slot, std::string) override { return Open(slot, "port"); }
  std::string EnterPassiveMode(int slot) override {
    sessions_[slot].closeAfterSend = true;
    return "227 (a whole reply).\r\n";
  }
  void CloseDataSocket(int) override { calls += "close "; }
  void CloseAllDataSockets() override { calls += "close-all "; }
  Task<bool> SendFtpListing(int slot) override { return Open(slot, "list"); }
  Task<bool> OpenRetrieve(int slot) override { return Open(slot, "retrieve"); }
  Task<bool> OpenStore(int slot, std::string) override { return Open(slot, "store"); }
  Task<> AwaitDataClose(int) override {
    calls += "await-end ";
    duringTransfer();
    co_return;
  }

  FtpSessions& sessions_;
};

using Exchange = std::pair<std::string, std::string>;  // what is sent, what is answered

class CommandInterpreterTest : public test::ProgramFixture {
 protected:
  CommandInterpreterTest() { sessions_.shared.ftpRoot = Home().Text("ftproot"); }

  // The reply to an arrival.
  std::string Answer(std::string text, int slot = 1) {
    bool done = false;
    std::string reply;
    OnLoop([&] { scope_->Start(Run(slot, std::move(text), reply, done)); });
    EXPECT_TRUE(Eventually([&] { return done; }));
    return reply;
  }

  // Sends lines, each with its line end.
  void Converse(const std::vector<Exchange>& exchanges) {
    for (const auto& [said, answered] : exchanges) {
      EXPECT_EQ(Answer(said + "\r\n"), answered) << said;
    }
  }

  FtpSessions sessions_;
  FtpOptions options_;
  MemoryBudget memory_{1U << 20};
  FakeHost host_{sessions_};
  FileOperations files_{sessions_, options_, memory_};
  CommandInterpreter interpreter_{host_, sessions_, files_, Program().errors};

 private:
  Task<> Run(int slot, std::string text, std::string& reply, bool& done) {
    Task<std::string> handling = interpreter_.HandleFtpCommand(slot, std::move(text));
    reply = co_await handling;
    done = true;
  }

  std::shared_ptr<net::HandlerScope> scope_ = std::make_shared<net::HandlerScope>(
      test::TheLoopHost().Loop(), [](const std::string& error) { ADD_FAILURE() << error; });
};

TEST_F(CommandInterpreterTest, AnswersFixedRepliesAndCutsArgumentsByPosition) {
  struct Case {
    std::string answered;
    std::vector<std::string> said;
  };
  const Case cases[] = {
      {"331 Anonymous access allowed, send identity (e-mail name) as password. \r\n",
       {"USER anybody\r\n", "USER\r\n"}},
      {"230 Anonymous user logged in. \r\n", {"PASS a@b\r\n", "PASS\r\n"}},
      {"421 \r\n", {"SYST\r\n", "SITE HELP\r\n", "SITE helpme\r\n"}},
      {"500 \r\n", {"SITE\r\n", "SITE HEL\r\n", "SITE  HELP\r\n", "OPTS UTF8 ON\r\n", "FEAT\r\n"}},
      {kAtRoot, {"PWD\r\n", "pwd\r\n"}},
      {"200 \r\n", {"NOOP\r\n", "noop x\r\n", "TYPE\r\n"}},
      {"350 \r\n", {"SIZE a.txt\r\n", "SIZE\r\n"}},
      {"227 (a whole reply).\r\n", {"PASV\r\n"}},
      {"221 再见\r\n", {"QUIT\r\n"}},
      {"500 Restarting at 5\r\n", {"REST 5\r\n"}},  // three characters with the line end
      {"500 Restarting at 0\r\n", {"REST \r\n", "REST\r\n", "REST 12"}},
      {"500 Restarting at 1\r\n", {"REST 123"}},  // the last two are taken for the line end
      // Unknown words, one with its blank and one with a line end in it.
      {"500 \r\n", {"ABOR\r\n", "MDTM a.txt\r\n", "RMD \r\n", "NOOP\r\nNOOP -a\r\n"}},
      // From seven characters on the word ends at a blank, below at the line end.
      {kDirectorySet, {"CWD \u554A\r\n", "CWD a\r\n", "CWD\r\n"}},
      {"",
       {"CWD \u554A", "CWD a", "NOOP", "\r\n", "", "LIST\r\r", " NOOP\r\n", "PWD\r\nPWD\r\n",
        "\xFF\xF4\xFF\xF2"
        "ABOR\r\n"}},
  };
  for (const auto& [answered, all] : cases) {
    for (const std::string& said : all) {
      sessions_.shared.abortRequested = false;
      EXPECT_EQ(Answer(said), answered) << said;
      EXPECT_EQ(sessions_.shared.abortRequested, answered.empty()) << said;
    }
  }
  EXPECT_EQ(host_.calls, "close-all ");
}

TEST_F(CommandInterpreterTest, RetrCutsItsNameAtAnyLength) {
  sessions_[1].physicalDir = "C:\\d";
  sessions_.shared.ftpRoot = "C:\\r\\";
  const std::string million(1 << 20, '\xE5');
  const std::vector<Exchange> cases = {
      {"RETR a.txt", "C:\\d\\a.t"},
      {"RETR  2 blanks \r\n", "C:\\d\\ 2 blanks "},
      {"RETR a\u6587\u4EF6", "C:\\d\\a"},
      {"RETR \xB0\xA1\r\n", "C:\\d\\\xB0\xA1"},
      {"RETR sub/a\r\n", "C:\\d\\sub/a"},
      {"RETR /pub/a\r\n", "C:\\r\\\\pub\\a"},
      {"RETR " + million + "\r\n", "C:\\d\\" + million},
  };
  for (const auto& [said, path] : cases) {
    Answer(said);
    EXPECT_TRUE(sessions_[1].transferPath == path) << said.substr(0, 99);
  }
}

TEST_F(CommandInterpreterTest, RefusesALongCommandOnceAndShowsNoPassword) {
  EXPECT_EQ(interpreter_.RefuseCommand(1, "CWD a"), "");
  EXPECT_TRUE(sessions_.shared.abortRequested);
  EXPECT_EQ(interpreter_.RefuseCommand(1, "CWD aaaa"), "500 \r\n");
  EXPECT_EQ(host_.shown, "a command that is too long");
  Answer("PASS secret\r\n");
  EXPECT_EQ(host_.shown, "PASS");
  Answer("RETR a b\r\nc");
  EXPECT_EQ(host_.shown, "RETR a b");
}

TEST_F(CommandInterpreterTest, TypeKeepsOneCharacterForAllSessionsAndAForWhatItDoesNotKnow) {
  const std::vector<Exchange> cases = {
      {"TYPE I", "I"},   {"TYPE i", "i"}, {"TYPE L8", "L"}, {"TYPE e", "e"},
      {"TYPE A N", "A"}, {"TYPE i", "i"}, {"TYPE", "A"},    {"TYPE i", "i"},
      {"TYPE  I", "A"},  {"TYPE i", "i"}, {"TYPE X", "A"},
  };
  for (const auto& [said, type] : cases) {
    EXPECT_EQ(Answer(said + "\r\n", 2), "200 \r\n");
    EXPECT_EQ(sessions_.shared.transferType, type) << said;
  }
  for (const char* word : {"USER", "NOOP"}) {
    Answer(std::string(word) + "\r\n", 2);
    Converse({{"PASS", "230 Anonymous user logged in. \r\n"}});
    EXPECT_EQ(sessions_.shared.lastCommand, word);
  }
}

TEST_F(CommandInterpreterTest, CwdJoinsTextsWithoutLookingAtTheDisk) {
  struct Case {
    const char *root, *from, *argument, *physical, *seen;
  };
  const Case cases[] = {
      {"C:\\ftp", "C:\\ftp\\", "pub", "C:\\ftp\\pub", "/pub/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "\r\n", "C:\\ftp\\", "/"},  // from six characters on
      {"C:\\ftp\\", "C:\\ftp\\pub", "/a/b/", "C:\\ftp\\a\\b\\", "/a/b/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "..", "C:\\ftp\\pub\\..", "/pub/../"},
      // No directory means the root of the drive.
      {"C:\\ftp\\", "", "pub", "\\pub", "/pub/"},
      // The root's text is replaced wherever it is found, in its own case only.
      {"\\d\\", "\\d\\", "x/d/y", "\\d\\x\\d\\y", "/x/y/"},
      {"C:\\FTP\\", "c:\\ftp", "a", "c:\\ftp\\a", "c:/ftp/a/"},
  };
  for (const Case& c : cases) {
    sessions_.shared.ftpRoot = c.root;
    sessions_[1].physicalDir = c.from;
    EXPECT_EQ(Answer(std::string("CWD ") + c.argument + "\r\n"), kDirectorySet);
    EXPECT_EQ(sessions_[1].physicalDir, c.physical) << c.argument;
    EXPECT_EQ(sessions_[1].ftpDir, c.seen) << c.argument;
    EXPECT_EQ(Answer("CWD\r\n"), kDirectorySet);
    EXPECT_EQ(sessions_[1].physicalDir, c.physical) << "a bare CWD";
  }
}

TEST_F(CommandInterpreterTest, TheUploadRuleSearchesTextAnywhereInAnyCaseButNotItself) {
  options_.uploadDir = "C:\\up\u00E4";
  const std::vector<std::pair<std::string, bool>> cases = {
      {"C:\\up\u00E4\\x", true},     {"c:\\UP\u00C4\\x", true},
      {"C:\\up\u00E4", false},       {"c:\\UP\u00C4", false},
      {"C:\\up\u00E4\\", true},      {"C:\\up\u00E42\\x", true},
      {"C:\\up\u00E4\\..\\x", true}, {"C:\\x", false},
      {"D:\\C:\\up\u00E4\\x", true}, {"C:\\/up\u00E4\\x", false},
      {"C:\\\\up\u00E4\\x", false},
  };
  for (const auto& [path, inside] : cases) {
    const std::size_t separator = path.rfind('\\');
    sessions_[1].physicalDir = path.substr(0, separator);
    Converse({{"RNFR " + path.substr(separator + 1), inside ? "350 \r\n" : "550 无访问权\r\n"}});
  }
}

// Conversations test the rules over the wire; this tests which reply each outcome gets.
TEST_F(CommandInterpreterTest, FileCommandsAnswerByTheirSuccess) {
  const std::string root = sessions_.shared.ftpRoot;
  std::filesystem::create_directories(Home().Path("ftproot/up"));
  Home().Write("ftproot/x", "x");
  options_.uploadDir = root + "\\up";
  const std::string deleFailed = "550 请求文件操作无法执行.";
  Converse({{"PWD", kAtRoot},
            {"MKD up\\new", "257 " + root + "已经创建\r\n"},  // the current directory
            {"MKD up\\new", "550 此文件夹为只读文件夹.\r\n"},
            {"MKD", "550 此文件夹为只读文件夹.\r\n"},
            {"RMD up\\new", "250 文件夹已经删除.\r\n"},
            {"RMD up", "550 请求文件操作无法执行（无访问权）.\r\n"},
            {"RNFR x", "550 无访问权\r\n"},
            {"RNTO y", "502 \r\n"},
            {"RNTO up\\x", "250 \r\n"},  // RNFR keeps what it refuses
            {"RNTO up\\y", "502 \r\n"},
            {"RNFR up\\x", "350 \r\n"},
            {"DELE x", deleFailed + "\r\n"},
            {"DELE up\\x", "250 文件已删除.\r\n"}});
  const std::string reason = Answer("DELE up\\x\r\n");
  EXPECT_TRUE(reason.starts_with(deleFailed) && reason.size() > deleFailed.size() + 2) << reason;
}

TEST_F(CommandInterpreterTest, TransfersAnswerBySuccessAndClosePartlyOpenedOnes) {
  struct Case {
    const char *said, *done, *refused, *calls, *callsIfRefused;
  };
  const Case cases[] = {
      {"PORT x", "200 \r\n", "530 暂时无法连接.\r\n", "port ", "port "},
      {"LIST", "226 Transfer complete.\r\n", "451 \r\n", "list await-end ", "list "},
      {"RETR a", "226 \r\n", "426 \r\n", "retrieve await-end ", "retrieve close "},
      {"STOR a", "226 stor command completed\r\n", kStorFailed, "store await-end ", "store close "},
  };
  const auto ask = [this](const Case& c, const char* answered, const char* calls) {
    host_.calls.clear();
    Converse({{c.said, answered}});
    EXPECT_EQ(host_.calls, calls) << c.said;
  };
  for (const Case& c : cases) {
    host_.opens = host_.throws = false;
    ask(c, c.refused, c.callsIfRefused);
    host_.throws = true;
    ask(c, c.refused, c.callsIfRefused);
    EXPECT_THAT(ErrorLog(), testing::HasSubstr(std::string(c.calls, 4)));
    host_.opens = !(host_.throws = false);
    ask(c, c.done, c.calls);
  }
  for (const char* said : {"PORT x", "PASV"}) {
    Answer(said + std::string("\r\n"));
    EXPECT_FALSE(sessions_[1].closeAfterSend) << said;
  }
}

TEST_F(CommandInterpreterTest, ATransferThatFailsOnTheWayOrIsAbortedIsReportedAtItsEnd) {
  host_.duringTransfer = [this] { sessions_[1].transfer->failed = true; };
  sessions_.shared.uploadByteCount = 5;
  Converse({{"RETR a", "426 \r\n"}, {"STOR a", kStorFailed}});
  EXPECT_EQ(sessions_.shared.uploadByteCount, 0);
  host_.duringTransfer = [this] { sessions_.shared.abortRequested = true; };
  Converse({{"RETR a", "426 \r\n"}, {"STOR a", "226 stor command completed\r\n"}});
  host_.duringTransfer = [] {};
  Converse({{"RETR a", "226 \r\n"}});  // each RETR begins anew
}

}  // namespace
}  // namespace ModFtp
