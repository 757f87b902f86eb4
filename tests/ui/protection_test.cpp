// How far strangers are trusted: the dialog, what it writes, and what the pages say of it.

#include "core/protection_text.h"
#include "tests/ui/main_window_fixture.h"
#include "text/strings.h"

namespace test {
namespace {

using Reach = core::ProtectionOptions::Reach;
using testing::EndsWith;
using testing::HasSubstr;

class Protection : public MainWindow {
 protected:
  std::string Settings() const { return text::ReplaceAll(Home().Read("Server.ini"), "\r", ""); }
  const core::ProtectionOptions& Options() { return Environment().protection.Options(); }
};

TEST_F(Protection, IsWrittenAsShownAndHoldsAtOnceAndNothingIsSetByLooking) {
  const std::string before = Settings();
  EXPECT_TRUE(Enter("mnuProtection", ""));
  EXPECT_TRUE(Enter("mnuProtection", "optLocal=on|chkHonest=on", wxID_CANCEL));
  EXPECT_EQ(Settings(), before);
  EXPECT_FALSE(Enter("mnuProtection", "optLocal=on|chkHonest=on|txtMessageLimit=0"));
  EXPECT_THAT(boxes.Take(), HasSubstr("1 到 32767"));
  EXPECT_EQ(focused, "txtMessageLimit");
  EXPECT_EQ(Settings(), before);
  Push("cmdStartAll");
  EXPECT_TRUE(Enter("mnuProtection",
                    "optLocal=on|chkConfine=on|chkFollowLinks=on|chkSignIn=on|chkHonest=on|"
                    "txtMessageLimit=7"));
  EXPECT_THAT(Settings(), EndsWith("[Protection]\nReach=local\nConfine=1\nFollowLinks=1\nSignIn=1\n"
                                   "Honest=1\nMessageLimit=7\n"));
  EXPECT_EQ(Options(), (core::ProtectionOptions{Reach::kLocal, true, true, true, true, 7}));
  Push("fraWeb/cmdTestReach");
  EXPECT_THAT(Label("fraWeb/lblTest"), HasSubstr("“仅本机”")) << "a test from here would pass";
  EXPECT_TRUE(Enter("mnuProtection", "optAll=on|chkSignIn=off|chkHonest=off|chkConfine=off"));
  ExpectShown("mnuProtection", "chkFollowLinks=grey|txtMessageLimit=grey|optAll=on|chkSignIn=off");
  EXPECT_THAT(Settings(), EndsWith("[Protection]\nReach=all\nConfine=0\nFollowLinks=1\nSignIn=0\n"
                                   "Honest=0\nMessageLimit=7\n"));
}

TEST_F(Protection, IsShownAsTheStricterWhereItsValueIsUnknownAndSavedSo) {
  Home().Write("Server.ini",
               "[Protection]\nReach=friends\nConfine=yes\nFollowLinks=yes\nSignIn=2\nHonest=on\n"
               "MessageLimit=lots\n");
  ExpectShown("mnuProtection",
              "optAll=off|optLan=off|optLocal=on|chkConfine=on|chkFollowLinks=off|chkSignIn=on|"
              "chkHonest=on|txtMessageLimit=25");
  EXPECT_TRUE(Enter("mnuProtection", ""));
  EXPECT_EQ(Settings(),
            "[Protection]\nReach=local\nConfine=1\nFollowLinks=0\nSignIn=1\nHonest=1\n"
            "MessageLimit=25\n");
  // A new file gets what holds, whichever dialog makes it.
  std::filesystem::remove(Home().Path("Server.ini"));
  EXPECT_TRUE(Enter("mnuOptions", ""));
  EXPECT_THAT(Settings(), HasSubstr("[Protection]\nReach=local\nConfine=1\nSignIn=1\nHonest=1\n"));
  // Of one that cannot be used, nothing is taken and nothing is replaced.
  Home().Write("Server.ini", "[Protection]\nRea");
  EXPECT_FALSE(Enter("mnuProtection", ""));
  EXPECT_THAT(boxes.Take(), HasSubstr("设置没有保存"));
  EXPECT_EQ(Options().reach, Reach::kLocal);
  std::filesystem::remove(Home().Path("Server.ini"));
  EXPECT_TRUE(Enter("mnuProtection", ""));
  EXPECT_FALSE(Home().Has("Server.ini"));
}

TEST_F(Protection, IsALineOfTheOverviewAndTheLastFirstStepAndWhatTheFtpPageSays) {
  EXPECT_EQ(Label("lblProtection"), "保护：关");
  EXPECT_THAT(Label("lblFtpNote"), HasSubstr(".."));
  EXPECT_TRUE(Enter("lblChangeProtection", "optLan=on"));
  EXPECT_EQ(Label("lblProtection"), "保护：部分开启");
  EXPECT_TRUE(IsVisible("cmdProtect") && IsVisible("lblCardFtpWarning")) << "files are open still";
  EXPECT_TRUE(InForm("cmdProtect", [](wxDialog& form) {
    Fill(form, "optAll=on");
    Press(form, "cmdRecommended");
    EXPECT_EQ(Contents(form, "optLan|chkConfine|chkSignIn"),
              "optLan=on|chkConfine=on|chkSignIn=off");
    Press(form, "cmdOK");
  }));
  EXPECT_FALSE(IsVisible("cmdProtect") || IsVisible("lblCardFtpWarning"));
  EXPECT_THAT(Label("lblUploads"), EndsWith("谁也不能上传、改名和删除。"));
  EXPECT_THAT(Label("lblFtpNote"), testing::Not(HasSubstr("..")));
  EXPECT_EQ(core::ProtectionText({Reach::kLan, true, false, true, true, 25}, 12),
            "保护：开，已拒绝 12 次");
}

}  // namespace
}  // namespace test
