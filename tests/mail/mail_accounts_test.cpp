#include "mail/mail_accounts.h"

#include "tests/support/server_fixture.h"

namespace {

using namespace ModMail;

class MailAccounts : public test::ProgramFixture {
 protected:
  const std::string root = Home().Text("mailroot");
};

TEST_F(MailAccounts, AreListedByUpperCasedNameWithTheirPasswords) {
  for (const char* name : {"carol", "Bob", "alice", "用户"}) {
    EXPECT_EQ(SaveMailUser(root, {name, std::string("pw ") + name}), std::error_code());
  }
  EXPECT_EQ(ChangeMailPassword(root, {"Bob", "new"}), std::error_code());
  Home().Write("mailroot/User/email.msg", "no mailbox");
  Home().Write("mailroot/User/bare/Message_1.eml", "a mailbox made by hand");
  std::string listed;
  for (const MailUser& user : ListMailUsers(root)) listed += user.name + "=" + user.password + ";";
  EXPECT_EQ(listed, "alice=pw alice;bare=;Bob=new;carol=pw carol;用户=pw 用户;");
}

TEST_F(MailAccounts, NeitherLeaveTheirFolderNorFollowLinks) {
  Home().Write("elsewhere/kept.txt", "x");
  Home().Write("mailroot/User/bob/Message_1/Content.txt", "x");
#ifndef _WIN32
  std::filesystem::create_directory_symlink(Home().Path("elsewhere"),
                                            Home().Path("mailroot/User/bob/link"));
#endif
  for (const char* name : {"", ".", "..", " ..", "..\\x", "../x", "bob/../bob", "c:x", "tab\t"}) {
    EXPECT_TRUE(SaveMailUser(root, {name, "pw"})) << name;
    EXPECT_TRUE(ChangeMailPassword(root, {name, "pw"})) << name;
    RemoveMailUser(root, name, Program().errors);
  }
  EXPECT_TRUE(Home().Has("mailroot/User/bob/Message_1/Content.txt"));
  RemoveMailUser(root, "bob", Program().errors);
  EXPECT_FALSE(Home().Has("mailroot/User/bob"));
  EXPECT_TRUE(Home().Has("elsewhere/kept.txt"));
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(MailAccounts, KeepPasswordsAsHashesThatOnlyTheRightPasswordMatches) {
  for (const char* name : {"alice", "bob"}) SaveMailUser(root, {name, "口令 1"});
  Home().Write("mailroot/User/bare/Message_1.eml", "a mailbox without a password");
  EXPECT_FALSE(HashMailPasswords(root));
  const StoredPassword bob = ReadStoredPassword(root, "bob");
  EXPECT_EQ(bob.plain, "");
  EXPECT_NE(bob.hash, ReadStoredPassword(root, "alice").hash);
  EXPECT_TRUE(ListMailUsers(root).front().isHashed);
  SaveMailUser(root, {"alice", "口令 2"}, PasswordForm::kHashed);
  ChangeMailPassword(root, {"bob", "plain"});
  std::string foreign = bob.hash;
  foreign.replace(foreign.find("t=2"), 3, "t=1");
  const auto isRight = [](const StoredPassword& stored, const char* password) {
    const auto begin = std::chrono::steady_clock::now();
    const bool is = IsStoredPassword(stored, password);
    // A check without a hash would take no time.
    EXPECT_GT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(2));
    return is;
  };
  EXPECT_TRUE(isRight(bob, "口令 1"));
  EXPECT_FALSE(isRight(bob, "口令 2"));
  EXPECT_FALSE(isRight(bob, ""));
  EXPECT_TRUE(isRight(ReadStoredPassword(root, "alice"), "口令 2"));
  EXPECT_TRUE(isRight(ReadStoredPassword(root, "bob"), "plain"));
  EXPECT_FALSE(isRight(ReadStoredPassword(root, "bob"), "plainplain"));
  EXPECT_FALSE(isRight(ReadStoredPassword(root, "bob"), "口令 1"));
  for (const char* name : {"bare", "nobody", "", "..", "../User/bob"}) {
    EXPECT_FALSE(isRight(ReadStoredPassword(root, name), "")) << name;
  }
  EXPECT_FALSE(isRight({.hash = foreign}, "口令 1"));
}

TEST(CleanNames, LoseWhatAFileNameCannotContainAndPasswordsTheirControlCharacters) {
  const std::tuple<std::string, const char*, const char*> cases[] = {
      {"  bob  ", "bob", "bob"},
      {"b\\o/b:*?\"<>|", "bob", "b\\o/b:*?\"<>|"},
      {std::string("b\0o\tb\x7F", 6), "bob", "bob"},
      {" a b ", "a b", "a b"},
      {"./.", "", "./."},
      {" . ", "", "."},
      {"...", "...", "..."},
      {"用户", "用户", "用户"},
  };
  for (const auto& [text, name, password] : cases) {
    EXPECT_EQ(CleanName(text), name);
    EXPECT_EQ(CleanPassword(text), password);
  }
}

}  // namespace
