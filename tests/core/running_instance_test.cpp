#include "platform/running_instance.h"

#include <gtest/gtest.h>

#include <asio/io_context.hpp>

#include "tests/support/user_directories.h"

namespace {

TEST(RunningInstances, OccupyTheirProgramDirectoryAndAreGivenUpIfTheyDoNotReact) {
  const test::UserDirectories user;
  const test::TemporaryFolder folder;
  const auto announce = [&](std::string_view name) {
    return platform::RunningInstance::Announce(folder.Path("Tarnwerk"), folder.Path(name));
  };
  EXPECT_TRUE(platform::CloseRunningInstances(std::chrono::seconds(1)));
  asio::io_context never;
  const auto deaf = announce("甲");
  ASSERT_TRUE(deaf);
  EXPECT_FALSE(announce("甲"));
  EXPECT_TRUE(announce("乙"));
  deaf->OnCloseRequest(never.get_executor(), [] {});
  EXPECT_FALSE(platform::CloseRunningInstances(std::chrono::seconds(1)));
}

}  // namespace
