#include "core/hosts_file.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

constexpr const char* kEntry = "\r\n127.0.0.1    home.example\r\n";

class HostsFile : public testing::Test {
 protected:
  bool Add() { return core::UpdateHostsFile(folder_.Text("hosts"), "127.0.0.1", "home.example"); }
  std::string AfterAdding(std::string_view before) {
    folder_.Write("hosts", before);
    Add();
    return folder_.Read("hosts");
  }
  test::TemporaryFolder folder_;
};

TEST_F(HostsFile, IsCreatedWithAnEmptyLineFirst) {
  EXPECT_TRUE(Add());
  EXPECT_EQ(folder_.Read("hosts"), kEntry);
  EXPECT_TRUE(Add());
  EXPECT_EQ(folder_.Read("hosts"), kEntry);
}

TEST_F(HostsFile, StaysAsItIsIfAnActiveLineHoldsBothTexts) {
  for (const char* content : {"127.0.0.1\tHOME.EXAMPLE\n", "x home.example y 127.0.0.1 # z\r\n",
                              " # home.example 127.0.0.1", "10.127.0.0.12 myhome.example.org\n"}) {
    EXPECT_EQ(AfterAdding(content), content);
  }
}

TEST_F(HostsFile, IsAppendedToWhereNoLineCounts) {
  for (const std::string content :
       {"#127.0.0.1 home.example\n", "127.0.0.1 localhost\n10.0.0.1 home.example",
        "\xFF\xFE broken bytes stay\n"}) {
    EXPECT_EQ(AfterAdding(content), content + kEntry);
  }
}

TEST_F(HostsFile, CountsNoLineBehindAByteOrderMarkAndANumberSign) {
  const std::string content = "\xEF\xBB\xBF#127.0.0.1 home.example\r\n";
  EXPECT_EQ(AfterAdding(content), content + kEntry);
}

TEST_F(HostsFile, OfManyLinesIsReadToItsEnd) {
  std::string content;
  while (content.size() < 1'000'000)
    content += "10.0.0.1 host-" + std::to_string(content.size()) + "\n";
  EXPECT_EQ(AfterAdding(content), content + kEntry);
  EXPECT_TRUE(Add());
  EXPECT_EQ(folder_.Read("hosts"), content + kEntry);
}

TEST_F(HostsFile, HasAnEmptyDomainInEveryActiveLineOfTheAddress) {
  const auto afterAddingNone = [this](std::string_view before) {
    folder_.Write("hosts", before);
    core::UpdateHostsFile(folder_.Text("hosts"), "127.0.0.1", "");
    return folder_.Read("hosts");
  };
  EXPECT_EQ(afterAddingNone("127.0.0.1 localhost\n"), "127.0.0.1 localhost\n");
  EXPECT_EQ(afterAddingNone("\n"), "\n\r\n127.0.0.1    \r\n");
}

TEST_F(HostsFile, ThatIsWriteProtectedStaysAsItIs) {
  folder_.Write("hosts", "127.0.0.1 localhost\n");
  std::filesystem::permissions(folder_.Path("hosts"), std::filesystem::perms::owner_read);
  const bool added = Add();
  std::filesystem::permissions(folder_.Path("hosts"), std::filesystem::perms::owner_all);
  if (added) GTEST_SKIP() << "this user may write what is protected";
  EXPECT_EQ(folder_.Read("hosts"), "127.0.0.1 localhost\n");
}

TEST_F(HostsFile, ThatCannotBeWrittenReportsFailureOnly) {
  folder_.Write("hosts/inside", "");
  EXPECT_FALSE(Add());
}

}  // namespace
