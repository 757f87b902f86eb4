#include "ui/dialogs/mail_user_dialog.h"

#include "tests/ui/dialog_fixture.h"

namespace {

using testing::IsEmpty;

class MailUserDialog : public test::DialogFixture {
 protected:
  MailUserDialog() { form_ = new ui::frmEmailUsers(nullptr, Program(), server_); }
  ~MailUserDialog() override { form_->Destroy(); }

  void Fill(const std::string& user, const std::string& password) {
    Type(*form_, "txtUser", user);
    Type(*form_, "txtPass", password);
  }
  int Confirm() {
    return Run(*form_, [&] { Press(*form_, "OKButton"); });
  }
  std::string UserInfo(const std::string& user) const {
    return Home().Read("mailroot/User/" + user + "/UserInfo.ini");
  }

  ModMail::MailServer server_{Environment()};
  ui::frmEmailUsers* form_;
};

TEST_F(MailUserDialog, AddsAUserWithTheFoldersAboveHim) {
  EXPECT_EQ(form_->GetTitle(), wxString::FromUTF8("添加用户"));
  Fill(" 张:三 ", " a b ");
  EXPECT_EQ(Confirm(), wxID_OK);
  EXPECT_EQ(UserInfo("张三"), "[用户信息]\r\nUser=张三\r\nPassword=a b\r\n");
  EXPECT_THAT(boxes.Take(), IsEmpty());
}

TEST_F(MailUserDialog, RefusesAnEmptyNameThenAnEmptyPassword) {
  form_->SetTitle("Editing");
  struct Case {
    const char* user;
    const char* password;
    const char* message;
    const char* field;
  };
  for (const Case& c :
       {Case{"  ", "", "请输入用户名！", "txtUser"}, Case{" / ", "x", "请输入用户名！", "txtUser"},
        Case{"..", "x", "请输入用户名！", "txtUser"}, Case{"a", "   ", "请输入密码！", "txtPass"},
        Case{"a", "*?", "请输入密码！", "txtPass"}}) {
    SCOPED_TRACE(std::string(c.user) + ", " + c.password);
    Fill(c.user, c.password);
    EXPECT_EQ(Run(*form_,
                  [&] {
                    Press(*form_, "OKButton");
                    EXPECT_EQ(FocusedName(), c.field);
                  }),
              kStayedOpen);
    const test::Box box = boxes.TakeOnly();
    EXPECT_EQ(box.text, c.message);
    EXPECT_EQ(box.title, "添加用户");
    EXPECT_EQ(box.style & wxICON_MASK, wxICON_WARNING);
  }
  EXPECT_FALSE(Home().Has("mailroot"));
}

TEST_F(MailUserDialog, AsksBeforeChangingAPasswordAndThenWritesTheNameToo) {
  const std::string before = "[用户信息]\r\nUser=old name\r\nPassword=old\r\n";
  Home().Write("mailroot/User/bob/UserInfo.ini", before);
  Fill("bob", "new");
  boxes.Plan(wxID_NO);
  EXPECT_EQ(Confirm(), kStayedOpen);
  EXPECT_EQ(UserInfo("bob"), before);
  test::Box box = boxes.TakeOnly();
  EXPECT_EQ(box.text, "该用户账号已存在，是否要更改密码？");
  EXPECT_EQ(box.title, "添加用户");
  EXPECT_TRUE(box.HasStyle(wxYES_NO | wxICON_QUESTION));

  boxes.Plan(wxID_YES);
  boxes.Plan(wxID_OK);
  EXPECT_EQ(Confirm(), wxID_OK);
  EXPECT_EQ(UserInfo("bob"), "[用户信息]\r\nUser=bob\r\nPassword=new\r\n");
  const auto shown = boxes.Take();
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_EQ(shown[1].text, "您已成功更改密码！");
  EXPECT_EQ(shown[1].title, "添加用户");
  EXPECT_EQ(shown[1].style & wxICON_MASK, wxICON_INFORMATION);
}

TEST_F(MailUserDialog, EnterGoesOnToThePasswordAndThenConfirmsOnlyWithTextInTheField) {
  EXPECT_EQ(Run(*form_,
                [&] {
                  PressEnterIn(*form_, "txtUser");
                  EXPECT_EQ(FocusedName(), "txtUser");
                  Type(*form_, "txtUser", "eva");
                  PressEnterIn(*form_, "txtUser");
                  EXPECT_EQ(FocusedName(), "txtPass");
                  PressEnterIn(*form_, "txtPass");
                  EXPECT_TRUE(form_->IsModal());
                  Type(*form_, "txtPass", "x");
                  PressEnterIn(*form_, "txtPass");
                }),
            wxID_OK);
  EXPECT_TRUE(Home().Has("mailroot/User/eva"));
  EXPECT_THAT(boxes.Take(), IsEmpty());
}

TEST_F(MailUserDialog, ReadsTheRootAgainWhereThereIsNoneInMemory) {
  server_.SetMailRoot("");
  Home().Write("Server.ini", "[MailServer Options]\nMailServer Root=" + UserPath("post") + "\n");
  ui::frmEmailUsers(nullptr, Program(), server_);
  EXPECT_EQ(server_.Options().mailRoot, Home().Text("post"));
}

}  // namespace
