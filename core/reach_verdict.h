#pragma once

// What a test of a service's reach (core/reach_test.h) means, in the user's words: what stands in
// the way, and what to do next. All such texts are made here.

#include <string>

#include "core/reach_test.h"
#include "core/service.h"
#include "platform/firewall.h"

namespace core {

/// The ports of the FTP server's data connections in passive mode, which clients open besides.
inline constexpr int kFirstFtpDataPort = 1024;
inline constexpr int kLastFtpDataPort = 1279;

struct ReachVerdict {
  std::string text;          // in lines of about 40 characters
  std::string command = {};  // lets the ports through the firewall; empty if none is known
  bool works = false;
};

/// Why there was no test.
ReachVerdict NotRunning();
ReachVerdict OnlyThisMachine();  // as the user wants it; a test from here would pass
ReachVerdict NotInANetwork();
ReachVerdict TooManyClients();  // one of whom the test would cut off

/// What was tested: a service at an address of this machine, on its ports, behind a firewall.
struct ReachTarget {
  ServiceKind service = ServiceKind::kWeb;
  std::string address;
  Ports ports;
  platform::FirewallState firewall;
  std::string executable;  // its path for the user's shell
};

/// `port`: where the finding was made.
ReachVerdict VerdictOn(const ReachTarget& target, ReachTest::Finding finding, int port);

}  // namespace core
