#include "tests/files/copying_fixture.h"

namespace test {
namespace {

TEST_F(CopyingFiles, TakesFilesAndTreesWithTheirTimesAndAddsToFoldersThatExist) {
  Home().Write("a.txt", "one");
  Home().Write("pics/deep/b.cgi", "four");
  Home().Write("pics/.hidden", "");
  Home().Write("to/pics/old", "x");
  fs::create_directory(Home().Path("pics/empty"));
  fs::last_write_time(Home().Path("a.txt"),
                      fs::file_time_type::clock::now() - std::chrono::days(9));
  Copying copying = Of({"a.txt", "pics\\"});
  EXPECT_EQ(Run(copying), State::kEnded);
  EXPECT_EQ(Target(),
            "a.txt=3 pics/ pics/.hidden=0 pics/deep/ pics/deep/b.cgi=4 pics/empty/ pics/old=1 ");
  EXPECT_EQ(Problems(copying), "");
  EXPECT_EQ(copying.Result().copied, 3U);
  EXPECT_EQ(copying.Now().allBytes, 7U);
  EXPECT_EQ(fs::last_write_time(Home().Path("to/a.txt")),
            fs::last_write_time(Home().Path("a.txt")));
}

TEST_F(CopyingFiles, ReplacesOnlyWhatItMay) {
  for (const char* name : {"from/a", "from/b", "from/c"}) Home().Write(name, "new");
  const auto run = [&](const std::vector<Copying::Decision>& decisions) {
    for (const char* name : {"to/a", "to/b", "to/c"}) Home().Write(name, "o");
    Copying copying = Of({"from\\a", "from\\b", "from\\c"});
    for (const Copying::Decision& decision : decisions) {
      EXPECT_EQ(Run(copying), State::kAsks);
      copying.Decide(decision);
    }
    const State state = Run(copying);
    copying.Cancel();
    return Target() + (state == State::kAsks ? "asks " : "") +
           std::to_string(copying.Result().skipped);
  };
  EXPECT_EQ(run({{true, false}, {false, false}, {true, false}}), "a=3 b=1 c=3 1");
  EXPECT_EQ(run({{true, false}, {false, true}}), "a=3 b=1 c=1 2");
  EXPECT_EQ(run({{true, true}}), "a=3 b=3 c=3 0");
  EXPECT_EQ(run({{true, false}}), "a=3 b=1 c=1 asks 0");
}

TEST_F(CopyingFiles, AFileAppearsOnlyWholeAndNothingUnfinishedIsLeft) {
  Home().Write("big/1/film", std::string(64 << 20, 'x'));
  Home().Write("to/kept", "");
  {
    Copying copying = Of({"big"});
    while (copying.Now().bytes == 0) copying.Step();
    EXPECT_FALSE(Home().Has("to/big/1/film"));
    std::size_t visible = 0;
    for (const auto& entry : fs::directory_iterator(Home().Path("to/big/1")))
      visible += !entry.path().filename().string().starts_with('.');
    EXPECT_EQ(visible, 0U);
    EXPECT_LT(copying.Now().bytes, copying.Now().allBytes) << "a turn is short";
  }
  EXPECT_EQ(Target(), "kept=0 ");
}

TEST_F(CopyingFiles, NeverGoIntoOrOntoThemselves) {
  Home().Write("to/pics/a", "1");
  Copying copying = Of({"to\\pics", "to"}, "to\\pics");
  EXPECT_EQ(Run(copying), State::kEnded);
  EXPECT_EQ(Problems(copying), Because("pics", Why::kIntoItself) + Because("to", Why::kIntoItself));
  Copying same = Of({"to\\pics", "to\\pics\\a"});
  Run(same);
  Copying again = Of({"to\\pics\\a"}, "to\\pics");
  Run(again);
  EXPECT_EQ(Problems(same) + Problems(again),
            Because("pics", Why::kOntoItself) + Because("a", Why::kOntoItself));
  EXPECT_EQ(Target(), "a=1 pics/ pics/a=1 ");
  EXPECT_EQ(copying.Now().files, 0U) << "not counted either";
}

TEST_F(CopyingFiles, TellWhatCannotBeCopiedAndGoOn) {
  Home().Write("tree/a", "1");
  Home().Write("tree/b/c", "1");
  Home().Write("to/tree/b", "a file");
  std::string deep = "deep";
  for (int i = 0; i < 70; ++i) deep += "/d";
  Home().Write(deep + "/deepest", "1");
  Copying copying = Of({"missing", "tree", "deep"});
  EXPECT_EQ(Run(copying), State::kEnded);
  EXPECT_THAT(Problems(copying),
              testing::StartsWith(Because("missing", Why::kUnreadable) +
                                  Because("tree\\b", Why::kOccupied) + "deep\\d"));
  EXPECT_THAT(Problems(copying), testing::EndsWith(Because("\\d", Why::kTooDeep)));
  EXPECT_EQ(copying.Result().copied, 1U);
}

}  // namespace
}  // namespace test
