#include "mail/mail_options.h"

#include "tests/support/server_fixture.h"

namespace {

using testing::HasSubstr;

class MailSettings : public test::ProgramFixture {
 protected:
  void Load() { options_.LoadMailOptions(Program(), "192.0.2.7"); }
  ModMail::MailOptions options_;
};

TEST_F(MailSettings, HaveTheirDefaultsOnlyWhileTheFileIsMissing) {
  Load();
  EXPECT_EQ(options_.mailRoot, Home().Text("mailroot"));
  EXPECT_EQ(options_.smtpPort, 25);
  EXPECT_EQ(options_.pop3Port, 110);
  EXPECT_EQ(options_.mailDomain, "localhost");
  EXPECT_EQ(options_.localAddress, "127.0.0.1");

  Home().Write("Server.ini", "[MailServer Options]\nSMTP port=2525\nIP=192.0.2.1\n");
  Load();
  EXPECT_EQ(options_.mailRoot, "");
  EXPECT_EQ(options_.smtpPort, 2525) << "keys are known in any case";
  EXPECT_EQ(options_.mailDomain, "");
  EXPECT_EQ(options_.localAddress, "192.0.2.7") << "the address in the file is not read";
}

TEST_F(MailSettings, KeepAPortThatCannotBeConvertedAndGoOn) {
  Home().Write("Server.ini", "[MailServer Options]\nSMTP Port=65536\nPOP3 Port=1100\nDNS=a.b\n");
  Load();
  EXPECT_EQ(options_.smtpPort, 25);
  EXPECT_EQ(options_.pop3Port, 1100);
  EXPECT_EQ(options_.mailDomain, "a.b");
  EXPECT_THAT(ErrorLog(), HasSubstr("SMTP Port"));
}

}  // namespace
