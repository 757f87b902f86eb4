#include "ui/dialogs/options_dialog.h"

#include <wx/textctrl.h>

#include "settings/autostart.h"
#include "settings/manager_password.h"
#include "settings/registry.h"
#include "tests/ui/dialog_fixture.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class OptionsDialog : public test::DialogFixture {
 protected:
  ~OptionsDialog() override {
    settings::SetManagerPassword(Program(), "");
    settings::SetStartsWithSystem(Program(), false);
    SetVersion("");
  }

  int Confirm(const std::function<void(ui::frmOptions&)>& change) {
    ui::frmOptions form(nullptr, Program());
    return Run(form, [&] {
      change(form);
      Press(form, "cmdOK");
    });
  }

  static void SetVersion(const std::string& version) {
    auto key = Modreg::CreateKey(*Modreg::RootByName("HKEY_LOCAL_MACHINE"),
                                 "Software\\Microsoft\\Windows\\CurrentVersion");
    Modreg::SetText(key, "Version", version);
  }
};

TEST_F(OptionsDialog, KeepsWhatIsTicked) {
  EXPECT_EQ(Confirm([](auto& form) {
              Set(form, "chkSysAutoStart", true);
              Set(form, "chkAutoStartService", true);
            }),
            wxID_OK);
  EXPECT_THAT(Home().Read("Server.ini"),
              HasSubstr("[System]\r\nAutoStartService=1\r\nStartInTaskBar=0\r\n"));
  EXPECT_TRUE(settings::StartsWithSystem(Program()));
  {
    ui::frmOptions form(nullptr, Program());
    EXPECT_TRUE(IsSet(form, "chkSysAutoStart"));
    EXPECT_TRUE(IsSet(form, "chkAutoStartService"));
    EXPECT_FALSE(IsSet(form, "chkShowInBar"));
    EXPECT_FALSE(IsSet(form, "chkManagerPwd"));
  }
  Confirm([](auto& form) { Set(form, "chkSysAutoStart", false); });
  EXPECT_FALSE(settings::StartsWithSystem(Program()));
}

TEST_F(OptionsDialog, TakesAPasswordOnlyWhileItsBoxIsTicked) {
  EXPECT_EQ(Confirm([](auto& form) {
              EXPECT_FALSE(form.txtPwd->IsEnabled());
              Set(form, "chkManagerPwd", true);
              EXPECT_TRUE(form.txtPwd->IsEnabled());
              Type(form, "txtPwd", "geheim 密码");
            }),
            wxID_OK);
  EXPECT_EQ(settings::ManagerPassword(Program()), "geheim 密码");
  EXPECT_TRUE(settings::CheckUser(Program(), "Admin", "geheim 密码"));
  EXPECT_EQ(Home().Read("ETUser.dzt").size(), 50U);

  Confirm([](auto& form) {
    EXPECT_TRUE(form.txtPwd->IsEnabled());
    EXPECT_EQ(TextIn(form, "txtPwd"), "geheim 密码");
    Set(form, "chkManagerPwd", false);
    EXPECT_FALSE(form.txtPwd->IsEnabled());
  });
  EXPECT_EQ(settings::ManagerPassword(Program()), "");
  EXPECT_FALSE(Home().Has("ETUser.dzt"));
}

TEST_F(OptionsDialog, SavesNothingWithoutThePasswordThatIsTicked) {
  settings::SetManagerPassword(Program(), "before");
  EXPECT_EQ(Confirm([](auto& form) {
              Set(form, "chkSysAutoStart", true);
              Set(form, "chkAutoStartService", true);
              Type(form, "txtPwd", "");
            }),
            kStayedOpen);
  const test::Box box = boxes.TakeOnly();
  EXPECT_EQ(box.text, "请输入管理密码！");
  EXPECT_EQ(box.style & wxICON_MASK, wxICON_EXCLAMATION);
  EXPECT_EQ(settings::ManagerPassword(Program()), "before");
  EXPECT_FALSE(Home().Has("Server.ini"));
  EXPECT_FALSE(settings::StartsWithSystem(Program()));
}

TEST_F(OptionsDialog, EndsAPasswordWhereItsFieldOfTheUserFileEnds) {
  ui::frmOptions form(nullptr, Program());
  Type(form, "txtPwd", std::string(31, 'x'));
  EXPECT_EQ(TextIn(form, "txtPwd"), std::string(30, 'x'));
}

TEST_F(OptionsDialog, TellsOfSystemsThatNeedAServiceAndWritesTheValueAllTheSame) {
  const auto tick = [](auto& form) { Set(form, "chkSysAutoStart", true); };
  SetVersion("Windows NT");
  EXPECT_EQ(Confirm(tick), wxID_OK);
  const test::Box box = boxes.TakeOnly();
  EXPECT_EQ(box.text, "您使用的操作系统是WINDOWS NT本程序须注册服务后才能使用！");
  EXPECT_EQ(box.style & wxICON_MASK, wxICON_EXCLAMATION);
  EXPECT_TRUE(settings::StartsWithSystem(Program()));

  SetVersion("Windows 98");
  Confirm(tick);
  EXPECT_THAT(boxes.Take(), IsEmpty());
}

TEST_F(OptionsDialog, CancelSavesNothing) {
  ui::frmOptions form(nullptr, Program());
  EXPECT_EQ(Run(form,
                [&] {
                  Set(form, "chkAutoStartService", true);
                  Press(form, "cmdCancel");
                }),
            wxID_CANCEL);
  EXPECT_FALSE(Home().Has("Server.ini"));
}

}  // namespace
