#include "platform/running_instance.h"

#include <gtest/gtest.h>

#include <thread>

#include "tests/support/loop_host.h"
#include "tests/support/user_directories.h"

namespace {

using platform::RunningInstance;

class RunningInstances : public testing::Test {
 protected:
  std::unique_ptr<RunningInstance> Announce(std::string_view name) {
    return RunningInstance::Announce(folder_.Path("Tarnwerk"), folder_.Path(name));
  }
  test::UserDirectories user_;
  test::TemporaryFolder folder_;
};

TEST_F(RunningInstances, AreToldApartByTheirProgramDirectory) {
  auto first = Announce("甲");
  ASSERT_TRUE(first);
  EXPECT_FALSE(Announce("甲"));
  EXPECT_TRUE(Announce("乙"));
  first.reset();
  EXPECT_TRUE(Announce("甲"));
}

TEST_F(RunningInstances, ThatDoNotReactAreGivenUp) {
  EXPECT_TRUE(platform::CloseRunningInstances(std::chrono::seconds(1)));
  asio::io_context never;
  const auto deaf = Announce("deaf");
  deaf->OnCloseRequest(never.get_executor(), [] {});
  EXPECT_FALSE(platform::CloseRunningInstances(std::chrono::seconds(1)));
}

}  // namespace
