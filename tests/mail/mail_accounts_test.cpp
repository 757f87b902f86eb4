#include "mail/mail_accounts.h"

#include "tests/support/server_fixture.h"

namespace {

using ModMail::MailUser;

class MailAccounts : public test::ProgramFixture {
 protected:
  const std::string root_ = Home().Text("mailroot");
};

TEST_F(MailAccounts, AreListedByUpperCasedNameAndTakeNewPasswords) {
  for (const char* name : {"carol", "Bob", "alice", "用户"}) {
    EXPECT_TRUE(ModMail::SaveMailUser(root_, {name, std::string("pw ") + name}));
  }
  EXPECT_EQ(Home().Read("mailroot/User/alice/UserInfo.ini"),
            "[用户信息]\r\nUser=alice\r\nPassword=pw alice\r\n");
  Home().Write("mailroot/User/email.msg", "no mailbox");
  Home().Write("mailroot/User/bare/Message_1.eml", "a mailbox made by hand");
  EXPECT_TRUE(ModMail::ChangeMailPassword(root_, {"Bob", "new"}));
  EXPECT_FALSE(ModMail::ChangeMailPassword(root_, {"nobody", "new"}));
  std::string listed;
  for (const MailUser& user : ModMail::ListMailUsers(root_)) {
    listed += user.name + "=" + user.password + ";";
  }
  EXPECT_EQ(listed, "alice=pw alice;bare=;Bob=new;carol=pw carol;用户=pw 用户;");
}

TEST_F(MailAccounts, RemovingOneTakesItsMessagesAndNothingElse) {
  Home().Write("mailroot/User/bob/Message_1.eml", "x");
  Home().Write("mailroot/User/bob/Message_1/Content.txt", "x");
  Home().Write("mailroot/User/alice/UserInfo.ini", "x");
  Home().Write("elsewhere/kept.txt", "x");
#ifndef _WIN32
  std::filesystem::create_directory_symlink(Home().Path("elsewhere"),
                                            Home().Path("mailroot/User/bob/link"));
#endif
  for (const char* name : {"bob", "", ".", "..", "..\\User", "nobody", "alice/../alice"}) {
    ModMail::RemoveMailUser(root_, name, Program().errors);
  }
  EXPECT_FALSE(Home().Has("mailroot/User/bob"));
  EXPECT_TRUE(Home().Has("mailroot/User/alice/UserInfo.ini"));
  EXPECT_TRUE(Home().Has("elsewhere/kept.txt"));
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(MailAccounts, AreNeverMadeOutsideTheFolderOfUsers) {
  for (const char* name : {"", ".", "..", " ..", "..\\x", "../x", "a/b", "c:x", "tab\t"}) {
    EXPECT_FALSE(ModMail::SaveMailUser(root_, {name, "pw"})) << name;
  }
  EXPECT_FALSE(Home().Has("mailroot"));
}

TEST(CleanText, RemovesWhatAFileNameCannotContain) {
  const struct {
    std::string text, cleaned;
  } cases[] = {{"  bob  ", "bob"},
               {"b\\o/b:*?\"<>|", "bob"},
               {std::string("b\0o\tb\x7F", 6), "bob"},
               {" a b ", "a b"},
               {"./.", ""},
               {" . ", ""},
               {"...", "..."},
               {"用户", "用户"}};
  for (const auto& one : cases) EXPECT_EQ(ModMail::CleanText(one.text), one.cleaned) << one.text;
}

}  // namespace
