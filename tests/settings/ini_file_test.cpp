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
  struct Case {
    std::string content, section, key, value;
  };
  EXPECT_EQ(ReadIni(Path(), "A", "k"), "");
  for (const Case& c : {
           Case{"[A]\r\nempty=\r\n", "B", "empty", ""},
           Case{"[A]\r\nempty=\r\n", "A", "other", ""},
           Case{"[A]\r\nempty=\r\n", "A", "empty", ""},
           Case{first, "A", "K", " first"},
           Case{first, "A", "late", ""},
           Case{"[A]\n; c=comment\n", "A", "; c", ""},
           Case{"[用户信息]\nPassword=秘\n", "用户信息", "password", "秘"},
           Case{"[A]\r\nk=  \"v\"   \r\n", "A", "k", "  \"v\""},
           Case{"[A]\nlong=" + x + x + "\n", "A", "long", x + "xxxx"},
           Case{"[A]\nwide=" + x + "xxx中\n", "A", "wide", x + "xxx"},
           Case{"[A]\nblank=" + x + "     y\n", "A", "blank", x},
           Case{"[A]\nnul=ab" + std::string(1, '\0') + "c\n", "A", "nul", "ab"},
           Case{"[S]\nname=\xD6\xD0\xCE\xC4\n", "S", "name", "中文"},  // GBK
           Case{"\xEF\xBB\xBF[A]\nk=v\n", "A", "k", "v"},
       }) {
    folder_.Write("Server.ini", c.content);
    EXPECT_EQ(ReadIni(Path(), c.section, c.key), c.value) << c.content;
  }
}

TEST_F(IniFile, ChangesOneValueAndNothingElse) {
  const std::string mine = "; mine\r\n[A]\r\nk=1\r\nodd line\r\n";
  const std::string gbk = "; \xD7\xA2\n[S]\nn=\xD6\xD0\xCE\xC4\nk=\xC2\xBD\n";
  struct Case {
    std::string before, section, key, value, after;
  };
  for (const Case& c : {
           Case{mine, "a", "K", "new", "; mine\r\n[A]\r\nk=new\r\nodd line\r\n"},
           Case{mine + "\r\n[B]\r\n", "A", "added", "x", mine + "added=x\r\n\r\n[B]\r\n"},
           Case{mine + "[B]\r\nz=2", "C", "c", "y", mine + "[B]\r\nz=2\r\n[C]\r\nc=y\r\n"},
           Case{"[A]\r", "A", "k", "v", "[A]\r\nk=v\r\n"},
           Case{"\xEF\xBB\xBF[A]\nk=v\n", "A", "k", "x\r\n[B]", "\xEF\xBB\xBF[A]\nk=x  [B]\n"},
           Case{"[S]\nname=\xD6\xD0\n", "S", "name", "文中", "[S]\nname=\xCE\xC4\xD6\xD0\n"},
           // All of it becomes UTF-8 where GBK lacks the value or would be taken for UTF-8.
           Case{gbk, "S", "l", "中😀", "; 注\n[S]\nn=中文\nk=陆\nl=中😀\n"},
           Case{gbk, "S", "l", "Ä", "; 注\n[S]\nn=中文\nk=陆\nl=Ä\n"},
           Case{"[S]\nk=\xD6\xD0\nl=\xC2\xBD\n", "S", "k", "plain", "[S]\nk=plain\nl=陆\n"},
       }) {
    folder_.Write("Server.ini", c.before);
    EXPECT_NE(WriteIni(Path(), c.section, c.key, c.value), 0);
    EXPECT_EQ(folder_.Read("Server.ini"), c.after) << c.before;
  }
}

TEST_F(IniFile, ThatIsTooLargeIsNeitherReadNorReplaced) {
  const std::string large = "[A]\nk=v\n" + std::string(5'000'000, 'x');
  folder_.Write("Server.ini", large);
  EXPECT_EQ(ReadIni(Path(), "A", "k"), "");
  EXPECT_EQ(WriteIni(Path(), "A", "k", "new"), 0);
  EXPECT_TRUE(folder_.Read("Server.ini") == large);
}

TEST_F(IniFile, AFailedWriteReportsFailureAndKeepsTheFile) {
  EXPECT_EQ(WriteIni(folder_.Text("missing\\Server.ini"), "A", "k", "v"), 0);
  folder_.Write("Server.ini/inside", "");  // a folder of that name
  EXPECT_EQ(WriteIni(Path(), "A", "k", "v"), 0);
  EXPECT_TRUE(folder_.Has("Server.ini/inside"));
}

}  // namespace
