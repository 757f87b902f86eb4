#include "settings/registry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/application_settings.h"
#include "tests/support/user_directories.h"

namespace {

const std::string kSubkey = "Software\\Tarnwerk\\Tests\\通用系统";
const std::string kPath = "hkey_current_user\\" + kSubkey;

class Registry : public testing::Test {
 protected:
  test::UserDirectories user_;
  Modreg::Key key_ = Modreg::CreateKey(Modreg::Root::kCurrentUser, kSubkey);
};

TEST_F(Registry, KeepsTextsAndNumbersAsTheyAre) {
  for (const std::string& text : {std::string("C:\\程序 \\Tarnwerk.exe"), std::string(),
                                  std::string("  [a]=b; \"c\"  "), std::string(3000, 'x')}) {
    Modreg::SetText(key_, "Path", text);
    EXPECT_EQ(Modreg::ReadText(kPath, "PATH"), text);
  }
  Modreg::WriteText(kPath, "Path", std::string("cut\0off", 7));
  EXPECT_EQ(Modreg::QueryText(key_, "path"), "cut");
  EXPECT_THROW(Modreg::QueryNumber(key_, "Path"), Modreg::Error);
  for (const std::int32_t number : {INT32_MIN, -1, INT32_MAX}) {
    Modreg::WriteNumber(kPath, "Number", number);
    EXPECT_EQ(Modreg::QueryNumber(key_, "number"), number);
  }
}

TEST_F(Registry, RaisesTheSystemsMessageForWhatIsMissing) {
  EXPECT_THROW(Modreg::OpenKey(Modreg::Root::kCurrentUser, "Software\\None"), Modreg::Error);
  EXPECT_THROW(Modreg::ReadText("HKEY_NOBODY\\" + kSubkey, "Path"), Modreg::Error);
  EXPECT_THAT(
      [this] { Modreg::QueryText(key_, "None"); },
      testing::Throws<Modreg::Error>(testing::Property(&Modreg::Error::what, testing::StrNe(""))));
}

TEST_F(Registry, AndTheUsersSettingsKeepWhatIsSaved) {
  for (const char* password : {" 密码=[1] ", ""}) {
    EXPECT_TRUE(settings::SaveSetting("TestsOnly", "ManagerPwd", "PWD", password));
    EXPECT_EQ(settings::GetSetting("TestsOnly", "ManagerPwd", "PWD", "standard"), password);
  }
  EXPECT_EQ(settings::GetSetting("OtherProgram", "ManagerPwd", "PWD", "standard"), "standard");
}

}  // namespace
