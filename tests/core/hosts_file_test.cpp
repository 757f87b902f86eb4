#include "core/hosts_file.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

TEST(HostsFile, KnowsTheFirstNameOfAnAddress) {
  const test::TemporaryFolder folder;
  folder.Write("hosts", "#10.0.0.1 not\n10.0.0.1\tpc-wang  other # x\r\n10.0.0.1 later\n::1\n");
  const std::map<std::string, std::string> names = {{"10.0.0.1", "pc-wang"}};
  EXPECT_EQ(core::HostNames(folder.Text("hosts")), names);
  EXPECT_TRUE(core::HostNames(folder.Text("missing")).empty());
}

TEST(HostsFile, GetsAnEntryUnlessAnActiveLineHoldsAddressAndDomain) {
  const test::TemporaryFolder folder;
  const std::string file = folder.Text("hosts");
  std::string many;
  while (many.size() < 1'000'000) many += "10.0.0.1 host-" + std::to_string(many.size()) + "\n";
  const struct {
    std::string content;
    bool isAdded;
  } cases[] = {
      {"127.0.0.1\tHOME.EXAMPLE\n", false},
      {"x home.example y 127.0.0.1 # z\r\n", false},
      {" # home.example 127.0.0.1", false},
      {"10.127.0.0.12 myhome.example.org\n", false},
      {"#127.0.0.1 home.example\n", true},
      {"\xEF\xBB\xBF#127.0.0.1 home.example\r\n", true},
      {"127.0.0.1 localhost\n10.0.0.1 home.example", true},
      {"\xFF\xFE broken bytes stay\n", true},
      {many, true},
      {"", true},
  };
  for (const auto& each : cases) {
    folder.Write("hosts", each.content);
    const std::string after =
        each.content + (each.isAdded ? "\r\n127.0.0.1    home.example\r\n" : "");
    for (int times = 0; times < 2; ++times) {
      EXPECT_TRUE(core::UpdateHostsFile(file, "127.0.0.1", "home.example"));
      EXPECT_EQ(folder.Read("hosts"), after);
    }
  }
  // Every active line of the address holds an empty domain.
  EXPECT_TRUE(core::UpdateHostsFile(file, "127.0.0.1", ""));
  EXPECT_EQ(folder.Read("hosts"), "\r\n127.0.0.1    home.example\r\n");
  folder.Write("hosts", "\n");
  EXPECT_TRUE(core::UpdateHostsFile(file, "127.0.0.1", ""));
  EXPECT_EQ(folder.Read("hosts"), "\n\r\n127.0.0.1    \r\n");
}

}  // namespace
