#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "tests/files/copying_fixture.h"

namespace test {
namespace {

TEST_F(CopyingFiles, FollowNoLinkOutOfTheirFolderOrInCirclesAndWaitForNoPipe) {
  Home().Write("tree/a.cgi", "1");
  Home().Write("secret", "1");
  fs::permissions(Home().Path("tree/a.cgi"), fs::perms::owner_all);
  fs::create_symlink(Home().Path("secret"), Home().Path("tree/outside"));
  fs::create_symlink(Home().Path("tree"), Home().Path("tree/around"));
  fs::create_symlink("a.cgi", Home().Path("tree/inside"));
  mkfifo(Home().Path("tree/pipe").c_str(), 0600);
  fs::create_directory_symlink(Home().Path("tree"), Home().Path("chosen"));
  Copying copying = Of({"chosen"});
  EXPECT_EQ(Run(copying), State::kEnded);
  for (const std::string& problem :
       {Because("chosen\\outside", Why::kLink), Because("chosen\\around", Why::kLink),
        Because("chosen\\pipe", Why::kUnreadable)}) {
    EXPECT_THAT(Problems(copying), testing::HasSubstr(problem));
  }
  EXPECT_EQ(Target(), "chosen/ chosen/a.cgi=1 chosen/inside=1 ");
  EXPECT_EQ(fs::status(Home().Path("to/chosen/a.cgi")).permissions(), fs::perms::owner_all);
  fs::create_directory_symlink(Home().Path("to"), Home().Path("tree/way"));
  Copying into = Of({"tree"}, "tree\\way\\chosen\\..\\..\\tree");
  EXPECT_EQ(Run(into), State::kEnded);
  EXPECT_EQ(Problems(into), Because("tree", Why::kIntoItself));
}

TEST_F(CopyingFiles, EndWithTheFirstFileThatDoesNotFitAndLeaveNoPartOfIt) {
  Home().Write("pics/large", std::string(3 << 20, 'x'));
  Home().Write("small", "1");
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit tight = {2 << 20, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &tight);
  Copying copying = Of({"pics", "small"});
  const State state = Run(copying);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(state, State::kEnded);
  EXPECT_EQ(Problems(copying), Because("pics\\large", Why::kUnwritable));
  EXPECT_TRUE(copying.Result().stopped && !copying.Result().cancelled);
  EXPECT_EQ(Target(), "");
}

}  // namespace
}  // namespace test
