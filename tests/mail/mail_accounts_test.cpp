#include "mail/mail_accounts.h"

#include "platform/native_path.h"
#include "tests/support/server_fixture.h"

namespace {

using ModMail::MailUser;
namespace fs = std::filesystem;

class MailAccounts : public test::ProgramFixture {
 protected:
  std::string Root() const { return Home().Text("mailroot"); }

  std::string Listed() const {
    std::string text;
    for (const MailUser& user : ModMail::ListMailUsers(Root())) {
      text += user.name + "=" + user.password + ";";
    }
    return text;
  }
};

TEST_F(MailAccounts, AreMadeWithTheirParentFoldersAndListedByUpperCasedName) {
  EXPECT_EQ(Listed(), "");
  for (const char* name : {"carol", "Bob", "alice", "用户"}) {
    EXPECT_FALSE(ModMail::SaveMailUser(Root(), {name, std::string("pw ") + name}));
  }
  Home().Write("mailroot/User/email.msg", "no mailbox");
  Home().Write("mailroot/User/bare/Message_1.eml", "a mailbox made by hand");
  EXPECT_EQ(Listed(), "alice=pw alice;bare=;Bob=pw Bob;carol=pw carol;用户=pw 用户;");
  EXPECT_EQ(Home().Read("mailroot/User/alice/UserInfo.ini"),
            "[用户信息]\r\nUser=alice\r\nPassword=pw alice\r\n");
}

TEST_F(MailAccounts, ChangingThePasswordLeavesTheNameAlone) {
  Home().Write("mailroot/User/bob/UserInfo.ini", "[用户信息]\r\nUser=Robert\r\n");
  EXPECT_FALSE(ModMail::ChangeMailPassword(Root(), {"bob", "new"}));
  EXPECT_EQ(Home().Read("mailroot/User/bob/UserInfo.ini"),
            "[用户信息]\r\nUser=Robert\r\nPassword=new\r\n");
  EXPECT_TRUE(ModMail::ChangeMailPassword(Root(), {"nobody", "new"}));
  EXPECT_FALSE(Home().Has("mailroot/User/nobody"));
}

TEST_F(MailAccounts, RemovingOneTakesItsMessagesAndNothingElse) {
  Home().Write("mailroot/User/bob/Message_1.eml", "x");
  Home().Write("mailroot/User/bob/Message_1/Content.txt", "x");
  Home().Write("mailroot/User/alice/UserInfo.ini", "x");
  Home().Write("elsewhere/kept.txt", "x");
#ifndef _WIN32
  fs::create_directory_symlink(Home().Path("elsewhere"), Home().Path("mailroot/User/bob/link"));
#endif
  ModMail::RemoveMailUser(Root(), "bob", Program().errors);
  EXPECT_FALSE(Home().Has("mailroot/User/bob"));
  for (const char* name : {"", ".", "..", "..\\User", "nobody", "alice/../alice"}) {
    ModMail::RemoveMailUser(Root(), name, Program().errors);
  }
  EXPECT_TRUE(Home().Has("mailroot/User/alice/UserInfo.ini"));
  EXPECT_TRUE(Home().Has("elsewhere/kept.txt"));
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(MailAccounts, AreNeverMadeOutsideTheFolderOfUsers) {
  for (const char* name : {"", ".", "..", " ..", "..\\x", "../x", "a/b", "c:x", "tab\t"}) {
    EXPECT_TRUE(ModMail::SaveMailUser(Root(), {name, "pw"})) << name;
  }
  EXPECT_FALSE(Home().Has("x"));
  EXPECT_FALSE(Home().Has("mailroot"));
}

TEST(CleanText, RemovesWhatAFileNameCannotContain) {
  const struct {
    std::string text;
    std::string cleaned;
  } cases[] = {
      {"  bob  ", "bob"},
      {"b\\o/b:*?\"<>|", "bob"},
      {std::string("b\0o\tb\x7F", 6), "bob"},
      {" a b ", "a b"},
      {"..", ""},
      {"./.", ""},
      {" . ", ""},
      {"...", "..."},
      {"用户", "用户"},
      {"\r\n", ""},
      {"", ""},
  };
  for (const auto& one : cases) EXPECT_EQ(ModMail::CleanText(one.text), one.cleaned) << one.text;
}

}  // namespace
