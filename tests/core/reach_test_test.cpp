#include "core/reach_test.h"

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <optional>
#include <thread>

#include "core/reach_verdict.h"
#include "tests/support/server_fixture.h"
#ifndef _WIN32
#include "platform/linux/firewall_files.h"
#endif

namespace {

using Finding = core::ReachTest::Finding;
using Tcp = asio::ip::tcp;
using testing::HasSubstr;

class PortReach : public test::ProgramFixture {
 protected:
  ~PortReach() override {
    OnLoop([this] { test_.reset(); });
  }

  // What is found on the port, where `greeting` is expected.
  Finding Find(std::uint16_t port, const char* greeting) {
    std::promise<Finding> found;
    OnLoop([&] {
      test_.emplace(Environment().loop, std::chrono::milliseconds(300));
      test_->Start("127.0.0.1", {{port, greeting}},
                   [&](Finding finding, int) { found.set_value(finding); });
    });
    return found.get_future().get();
  }

  asio::io_context context_;
  Tcp::acceptor acceptor_{context_, {asio::ip::address_v4::loopback(), 0}};
  std::optional<core::ReachTest> test_;
};

TEST_F(PortReach, IsWhatThePortSaysFirstOrFailsToSay) {
  const std::uint16_t port = acceptor_.local_endpoint().port();
  EXPECT_EQ(Find(port, ""), Finding::kReached) << "a connection will do";
  EXPECT_EQ(Find(port, "220"), Finding::kSilent);
  acceptor_.accept().close();
  acceptor_.accept().close();
  const std::pair<const char*, Finding> kCases[] = {{"220 x\r\n", Finding::kReached},
                                                    {"SSH-2.0\r\n", Finding::kStranger},
                                                    {"22", Finding::kTurnedAway},
                                                    {"", Finding::kTurnedAway}};
  for (const auto& [says, finding] : kCases) {
    std::thread server([&, says = std::string(says)] {
      Tcp::socket client = acceptor_.accept();
      asio::write(client, asio::buffer(says));
    });
    EXPECT_EQ(Find(port, "220"), finding) << says;
    server.join();
  }
  acceptor_.close();
  EXPECT_EQ(Find(port, ""), Finding::kRefused);
}

TEST(ReachVerdict, GivesTheCommandThatLetsAllPortsThroughTheFirewall) {
  using Kind = platform::FirewallState::Kind;
  const auto verdict = [](core::ServiceKind service, Kind kind, bool admits = false) {
    return core::VerdictOn({service, "192.168.1.5", {25, 110}, {kind, admits}, "C:\\t.exe"},
                           Finding::kReached, 25);
  };
  using core::ServiceKind;
  EXPECT_EQ(verdict(ServiceKind::kWeb, Kind::kUfw).command, "sudo ufw allow 25/tcp");
  EXPECT_EQ(verdict(ServiceKind::kMail, Kind::kUfw).command,
            "sudo ufw allow 25/tcp && sudo ufw allow 110/tcp");
  EXPECT_THAT(verdict(ServiceKind::kFtp, Kind::kFirewalld).command,
              HasSubstr("--add-port=25/tcp --add-port=1024-1279/tcp && "));
  EXPECT_THAT(verdict(ServiceKind::kFtp, Kind::kWindows).command, HasSubstr("program=\"C:\\t.exe"));
  for (const auto& open : {verdict(ServiceKind::kFtp, Kind::kWindows, true),
                           verdict(ServiceKind::kWeb, Kind::kNoneFound)}) {
    EXPECT_TRUE(open.works && open.command.empty()) << open.text;
  }
}

#ifndef _WIN32
TEST(FirewallState, IsReadFromTheFilesThatEverybodyMayRead) {
  using Kind = platform::FirewallState::Kind;
  const test::TemporaryFolder root;
  const auto kind = [&] { return platform::FirewallIn(root.Native()); };
  EXPECT_EQ(kind(), Kind::kNoneFound);
  root.Write("etc/ufw/ufw.conf", "# ENABLED=yes\nENABLED=no\n");
  EXPECT_EQ(kind(), Kind::kNoneFound);
  root.Write("etc/systemd/system/sysinit.target.wants/nftables.service", "");
  EXPECT_EQ(kind(), Kind::kNftables);
  root.Write("run/firewalld.pid", "1");
  EXPECT_EQ(kind(), Kind::kFirewalld);
  root.Write("etc/ufw/ufw.conf", "LOGLEVEL=low\nENABLED=\"Yes\"\n");
  EXPECT_EQ(kind(), Kind::kUfw);
}
#endif

}  // namespace
