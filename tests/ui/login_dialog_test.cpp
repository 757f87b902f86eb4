#include "ui/dialogs/login_dialog.h"

#include <wx/stattext.h>

#include "tests/ui/dialog_fixture.h"

namespace {

std::string Record(std::string name, std::string password) {
  name.resize(20, ' ');
  password.resize(30, ' ');
  return name + password;
}

class LoginDialog : public test::DialogFixture {
 protected:
  /// Whether `password` logs in and closes the dialog.
  bool LogsIn(const std::string& password) {
    ui::frmPassWord form(nullptr, Program());
    const int result = Run(form, [&] {
      EXPECT_FALSE(form.lblMsg->IsShown());
      EXPECT_EQ(FocusedName(), "txtPwd");
      Type(form, "txtPwd", password);
      Press(form, "cmdOK");
      EXPECT_NE(form.lblMsg->IsShown(), form.LoginOK());
    });
    EXPECT_EQ(result, form.LoginOK() ? wxID_OK : kStayedOpen);
    return form.LoginOK();
  }
};

TEST_F(LoginDialog, TakesTheBuiltInPasswordOnlyWithoutAUserFile) {
  EXPECT_TRUE(LogsIn(" 739205 "));
  EXPECT_FALSE(LogsIn("739206"));
  EXPECT_FALSE(LogsIn(""));
  Home().Write("ETUser.dzt", Record("Admin", "Secret"));
  EXPECT_FALSE(LogsIn("739205"));
  EXPECT_TRUE(LogsIn("Secret"));
  EXPECT_FALSE(LogsIn("secret"));
}

TEST_F(LoginDialog, LetsNobodyInByAnotherOrAShortRecord) {
  Home().Write("ETUser.dzt", Record("admin", "x") + Record("Admin", "x"));
  EXPECT_FALSE(LogsIn("x"));
  EXPECT_FALSE(LogsIn("739205"));
  Home().Write("ETUser.dzt", Record("Admin", "x").substr(0, 49));
  EXPECT_FALSE(LogsIn("x"));
  Home().Write("ETUser.dzt", "");
  EXPECT_FALSE(LogsIn("739205"));
}

TEST_F(LoginDialog, LetsTheUserTryAgainByEnter) {
  ui::frmPassWord form(nullptr, Program());
  EXPECT_EQ(Run(form,
                [&] {
                  for (int i = 0; i < 20; ++i) {
                    Type(form, "txtPwd", "wrong");
                    PressEnterIn(form, "txtPwd");
                    EXPECT_EQ(FocusedName(), "txtPwd");
                  }
                  Type(form, "txtPwd", "739205");
                  PressEnterIn(form, "txtPwd");
                }),
            wxID_OK);
  EXPECT_TRUE(form.LoginOK());
}

TEST_F(LoginDialog, CancelAndTimerLeaveTheOutcomeAsItWas) {
  const auto tick = [](ui::frmPassWord& form) {
    EXPECT_TRUE(form.Timer1.IsRunning());
    wxTimerEvent event(form.Timer1);
    form.ProcessWindowEvent(event);
  };
  ui::frmPassWord form(nullptr, Program());
  EXPECT_EQ(Run(form, [&] { tick(form); }), wxID_CANCEL);
  EXPECT_FALSE(form.LoginOK());
  Run(form, [&] {
    Type(form, "txtPwd", "739205");
    Press(form, "cmdOK");
  });
  EXPECT_EQ(Run(form, [&] { Press(form, "cmdCancel"); }), wxID_CANCEL);
  EXPECT_EQ(Run(form, [&] { tick(form); }), wxID_CANCEL);
  EXPECT_TRUE(form.LoginOK());
}

}  // namespace
