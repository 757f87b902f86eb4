#include "settings/ini_file.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

using ModINIOP::ReadIni;
using ModINIOP::WriteIni;

class IniFile : public testing::Test {
 protected:
  std::string Path() const { return folder_.Text("Server.ini"); }
  test::TemporaryFolder folder_;
};

TEST_F(IniFile, IsReadByTheseRules) {
  const std::string first = "[a]\nK = first\nk=second\n[A]\nk=third\nlate=no\n; c=comment\n";
  const std::string x(250, 'x');
  const struct {
    std::string content, section, key, value;
  } cases[] = {
      {first, "A", "K", " first"},
      {first, "A", "late", ""},
      {"[A]\n; c=comment\nempty=\r\n", "A", "; c", ""},
      {"[用户信息]\nPassword=秘\n", "用户信息", "password", "秘"},
      {"[A]\r\nk=  \"v\"   \r\n", "A", "k", "  \"v\""},
      {"[A]\nlong=" + x + x + "\n", "A", "long", x + "xxxx"},
      {"[A]\nwide=" + x + "xxx中\n", "A", "wide", x + "xxx"},
      {"[A]\nblank=" + x + "     y\n", "A", "blank", x},
      {"[A]\nnul=ab" + std::string(1, '\0') + "c\n", "A", "nul", "ab"},
      {"[S]\nname=\xD6\xD0\xCE\xC4\n", "S", "name", "中文"},  // GBK
      {"\xEF\xBB\xBF[A]\nk=v\n", "A", "k", "v"},
  };
  for (const auto& each : cases) {
    folder_.Write("Server.ini", each.content);
    EXPECT_EQ(ReadIni(Path(), each.section, each.key), each.value) << each.content;
  }
}

TEST_F(IniFile, ChangesOneValueAndNothingElse) {
  const std::string mine = "; mine\r\n[A]\r\nk=1\r\nodd line\r\n";
  const std::string gbk = "; \xD7\xA2\n[S]\nn=\xD6\xD0\xCE\xC4\nk=\xC2\xBD\n";
  const struct {
    std::string before, section, key, value, after;
  } cases[] = {
      {mine, "a", "K", "new", "; mine\r\n[A]\r\nk=new\r\nodd line\r\n"},
      {mine + "\r\n[B]\r\n", "A", "added", "x", mine + "added=x\r\n\r\n[B]\r\n"},
      {mine + "[B]\r\nz=2", "C", "c", "y", mine + "[B]\r\nz=2\r\n[C]\r\nc=y\r\n"},
      {"[A]\r", "A", "k", "v", "[A]\r\nk=v\r\n"},
      {"\xEF\xBB\xBF[A]\nk=v\n", "A", "k", "x\r\n[B]", "\xEF\xBB\xBF[A]\nk=x  [B]\n"},
      {"[S]\nname=\xD6\xD0\n", "S", "name", "文中", "[S]\nname=\xCE\xC4\xD6\xD0\n"},
      // All of it becomes UTF-8 where GBK lacks the value or would be taken for UTF-8.
      {gbk, "S", "l", "中😀", "; 注\n[S]\nn=中文\nk=陆\nl=中😀\n"},
      {gbk, "S", "l", "Ä", "; 注\n[S]\nn=中文\nk=陆\nl=Ä\n"},
      {"[S]\nk=\xD6\xD0\nl=\xC2\xBD\n", "S", "k", "plain", "[S]\nk=plain\nl=陆\n"},
  };
  for (const auto& each : cases) {
    folder_.Write("Server.ini", each.before);
    EXPECT_NE(WriteIni(Path(), each.section, each.key, each.value), 0);
    EXPECT_EQ(folder_.Read("Server.ini"), each.after) << each.before;
  }
}

}  // namespace
