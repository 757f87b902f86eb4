#include "settings/registry.h"

#include <gtest/gtest.h>

#include <limits>

#include "settings/application_settings.h"
#include "tests/support/user_directories.h"

namespace {

using Modreg::Root;

constexpr const char* kSubkey = "Software\\Tarnwerk\\Tests\\通用系统";
const std::string kPath = std::string("hkey_current_user\\") + kSubkey;

class Registry : public testing::Test {
 protected:
  test::UserDirectories user_;
  Modreg::Key key_ = Modreg::CreateKey(Root::kCurrentUser, kSubkey);
};

std::error_code CodeOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Modreg::Error& error) {
    EXPECT_STRNE(error.what(), "");
    return error.code();
  }
  return {};
}

TEST_F(Registry, KeepsTextsAsTheyAre) {
  const std::string longText(3000, 'x');
  for (const std::string& text : {std::string("C:\\程序 \\Tarnwerk.exe"), std::string(),
                                  std::string("  [a]=b; \"c\"  "), longText}) {
    Modreg::SetText(key_, "Path", text);
    EXPECT_EQ(Modreg::QueryText(key_, "PATH"), text);
  }
  Modreg::SetText(key_, "Path", std::string("cut\0off", 7));
  EXPECT_EQ(Modreg::QueryText(key_, "path"), "cut");
}

TEST_F(Registry, KeepsNumbersOf32Bits) {
  for (const std::int32_t number : {0, 1, -1, std::numeric_limits<std::int32_t>::max(),
                                    std::numeric_limits<std::int32_t>::min()}) {
    Modreg::SetNumber(key_, "Number", number);
    EXPECT_EQ(Modreg::QueryNumber(key_, "number"), number);
  }
  Modreg::SetText(key_, "Number", "twelve");
  EXPECT_TRUE(CodeOf([this] { Modreg::QueryNumber(key_, "Number"); }));
}

TEST_F(Registry, RaisesTheSystemsMessageForWhatIsMissing) {
  const auto missing = std::errc::no_such_file_or_directory;
  EXPECT_EQ(CodeOf([] { Modreg::OpenKey(Root::kCurrentUser, "Software\\Tarnwerk\\None"); }),
            missing);
  EXPECT_EQ(CodeOf([this] { Modreg::QueryText(key_, "None"); }), missing);
  EXPECT_EQ(CodeOf([this] { Modreg::QueryNumber(key_, "None"); }), missing);
  Modreg::CloseKey(key_);
  EXPECT_TRUE(CodeOf([this] { Modreg::QueryText(key_, "Path"); }));
  EXPECT_TRUE(CodeOf([this] { Modreg::SetText(key_, "Path", ""); }));
}

TEST_F(Registry, IsReadAndWrittenByWholePathsToo) {
  Modreg::WriteText(kPath, "Text", "文字");
  EXPECT_EQ(Modreg::ReadText(std::string("HKEY_CURRENT_USER\\") + kSubkey, "Text"), "文字");
  EXPECT_EQ(Modreg::QueryText(key_, "Text"), "文字");
  Modreg::WriteNumber(kPath, "Number", 7);
  EXPECT_EQ(Modreg::ReadNumber(kPath, "Number"), 7);
}

TEST_F(Registry, TakesNoPathWithoutARootOrOfAMissingKey) {
  for (const std::string& path : {std::string(kSubkey), "HKEY_NOBODY\\" + std::string(kSubkey),
                                  " " + kPath, std::string(), kPath + "\\none"}) {
    EXPECT_TRUE(CodeOf([&] { Modreg::WriteText(path, "Text", "x"); })) << path;
    EXPECT_TRUE(CodeOf([&] { Modreg::ReadText(path, "Text"); })) << path;
  }
}

TEST_F(Registry, KnowsItsFourRootsByNameAndHandle) {
  const std::pair<const char*, std::uint32_t> roots[] = {{"HKEY_CLASSES_ROOT", 0x80000000},
                                                         {"HKEY_CURRENT_USER", 0x80000001},
                                                         {"HKEY_LOCAL_MACHINE", 0x80000002},
                                                         {"HKEY_USERS", 0x80000003}};
  for (const auto& [name, handle] : roots) {
    EXPECT_EQ(Modreg::RootName(static_cast<Root>(handle)), name);
    EXPECT_EQ(Modreg::RootByName(name), static_cast<Root>(handle));
  }
  EXPECT_EQ(Modreg::RootByName("Hkey_Users"), Root::kUsers);
  EXPECT_EQ(Modreg::RootByName("HKEY_USERS "), std::nullopt);
  EXPECT_EQ(Modreg::RootName(static_cast<Root>(0x80000004)), "");
}

TEST_F(Registry, AndTheUsersSettingsKeepWhatIsSaved) {
  EXPECT_EQ(settings::GetSetting("TestsOnly", "ManagerPwd", "None", "standard"), "standard");
  for (const char* password : {" 密码=[1] ", ""}) {
    EXPECT_TRUE(settings::SaveSetting("TestsOnly", "ManagerPwd", "PWD", password));
    EXPECT_EQ(settings::GetSetting("TestsOnly", "ManagerPwd", "PWD", "standard"), password);
  }
  EXPECT_EQ(settings::GetSetting("OtherProgram", "ManagerPwd", "PWD", "standard"), "standard");
}

}  // namespace
