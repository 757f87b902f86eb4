#pragma once

// A program directory in a temporary folder, and a server of it on the test program's loop.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "core/activity_text.h"
#include "core/protection.h"
#include "core/service_environment.h"
#include "settings/program.h"
#include "tests/support/client.h"
#include "tests/support/loop_host.h"
#include "tests/support/temporary_folder.h"

namespace test {

class ProgramFixture : public testing::Test {
 protected:
  const TemporaryFolder& Home() const { return home_; }
  const settings::Program& Program() const { return program_; }
  core::ServiceEnvironment Environment() {
    return {program_, TheLoopHost().Loop(), home_.Text("hosts"), protection_};
  }

  /// What the program has written to RunErr.Log so far.
  std::string ErrorLog() const { return home_.Read("RunErr.Log"); }

  static void OnLoop(const std::function<void()>& action) { TheLoopHost().Call(action); }

  /// Waits until `condition`, asked on the loop, holds; false if it does not within some seconds.
  static bool Eventually(const std::function<bool()>& condition) {
    bool holds = false;
    for (int tries = 1000; tries > 0 && !holds; --tries) {
      OnLoop([&] { holds = condition(); });
      if (!holds) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return holds;
  }

 private:
  TemporaryFolder home_;
  settings::Program program_{home_.Text(), "Tarnwerk"};
  core::Protection protection_{program_};
};

/// What a server tells of its clients, a line each: "下载 a.txt 完成".
struct ActivityLog final : net::ActivityObserver {
  void OnActivityEnded(const net::EndedActivity& ended) override {
    lines.push_back(core::ActivityText(ended.activity) + " " + core::EndText(ended.end));
    last = ended;
  }
  std::vector<std::string> lines;
  net::EndedActivity last;
};

/// A started server of type `Server`; on a port that the system chose if Server.ini says 0.
template <class Server>
class ServerFixture : public ProgramFixture {
 public:
  ~ServerFixture() override { StopServer(); }

 protected:
  bool StartServer() {
    bool started = false;
    OnLoop([&] {
      if (!server_) server_.emplace(Environment());
      started = server_->Start();
    });
    return started;
  }

  void StopServer() {
    OnLoop([&] { server_.reset(); });
  }

  /// To be used on the loop only.
  Server& TheServer() { return *server_; }

 private:
  std::optional<Server> server_;
};

}  // namespace test
