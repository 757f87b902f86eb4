#include "ui/dialogs/web_options_dialog.h"

#include <wx/listbox.h>

#include "ftp/ftp_server.h"
#include "mail/mail_server.h"
#include "tests/ui/dialog_fixture.h"
#include "ui/controls/toolkit_text.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WebOptionsDialog : public test::DialogFixture {
 protected:
  ui::frmWebOptions& Form() {
    if (!form_) form_ = new ui::frmWebOptions(nullptr, Program(), server_);
    return *form_;
  }
  ~WebOptionsDialog() override {
    if (form_ != nullptr) form_->Destroy();
  }

  int RunForm(const std::function<void()>& script) { return Run(Form(), script); }

  std::vector<std::string> Documents() {
    std::vector<std::string> names;
    for (const wxString& name : Form().lstDocument->GetStrings()) names.push_back(ui::Typed(name));
    return names;
  }

  ModWeb::WebServer server_{Environment()};

 private:
  ui::frmWebOptions* form_ = nullptr;
};

TEST_F(WebOptionsDialog, AsksTheFileWhetherProgramsAreOffAndTheSettingsWhetherTheyAreOn) {
  struct Case {
    const char* file;  // none if null
    const char* optAppDone;
    bool none;
    bool done;
  };
  for (const Case& c : {Case{nullptr, "False", true, false}, Case{nullptr, "True", false, true},
                        Case{"1", "False", true, false}, Case{"0", "False", false, false},
                        Case{"1", "True", false, true}, Case{"0", "True", false, true}}) {
    SCOPED_TRACE(std::string(c.file == nullptr ? "no file" : c.file) + ", " + c.optAppDone);
    if (c.file != nullptr) {
      Home().Write("EnabalExecute.txt",
                   "[应用程序许可]\nEnabalExecute=" + std::string(c.file) + "\n");
    }
    Home().Write("Server.ini", "[WebServer Options]\nTCPPort=80\nStartDefaultPage=1\noptAppDone=" +
                                   std::string(c.optAppDone) + "\n");
    ui::frmWebOptions form(nullptr, Program(), server_);
    EXPECT_EQ(IsSet(form, "optAppNone"), c.none);
    EXPECT_EQ(IsSet(form, "OptAppDone"), c.done);
  }
}

TEST_F(WebOptionsDialog, BringsTheSettingsFileIntoBeingWithWhatTheOtherServersHold) {
  ModFtp::FtpServer ftp(Environment());
  ModMail::MailServer mail(Environment());
  Home().Write("Server.ini",
               "[FtpServer Options]\nFtpPort=2121\nDNS=f.example\n"
               "FtpServer UploadDir=/srv/up\n");
  ftp.LoadOptions();
  std::filesystem::remove(Home().Path("Server.ini"));
  RunForm([&] {
    Type(Form(), "txtWebPort", "8080");
    Press(Form(), "cmdOK");
  });
  ftp.LoadOptions();
  mail.LoadOptions();
  server_.LoadOptions();
  EXPECT_EQ(server_.Options().WebPort, 8080);
  EXPECT_EQ(ftp.Options().ftpPort, 2121);
  EXPECT_EQ(ftp.Options().ftpDomain, "f.example");
  EXPECT_EQ(mail.Options().mailRoot, Home().Text("mailroot"));
  EXPECT_EQ(mail.Options().pop3Port, 110);
  EXPECT_THAT(ErrorLog(), IsEmpty());
}

TEST_F(WebOptionsDialog, StaysOpenAndSaysSoWhereTheSettingsCannotBeReadOrWritten) {
  for (const char* file : {"Server.ini/inside", "IndexFN.Log/inside"}) {
    SCOPED_TRACE(file);
    Home().Write(file, "");
    ui::frmWebOptions form(nullptr, Program(), server_);
    boxes.Plan(wxID_OK);
    EXPECT_EQ(Run(form, [&] { Press(form, "cmdOK"); }), kStayedOpen);
    EXPECT_THAT(boxes.TakeOnly().text, testing::HasSubstr("设置没有保存"));
    EXPECT_TRUE(Home().Has(file));
    EXPECT_THAT(ErrorLog(), testing::HasSubstr("Settings not saved: "));
    std::filesystem::remove_all(Home().Path(file).parent_path());
    EXPECT_FALSE(Home().Has("IndexFN.Log") || Home().Has("Server.ini"));
  }
}

TEST_F(WebOptionsDialog, WritesTheDocumentsAnewInTheOrderOfTheList) {
  Home().Write("IndexFN.Log", "a.htm\r\nb.htm\r\n");
  RunForm([&] {
    auto& form = Form();
    boxes.Plan(wxID_OK, "新.htm");
    Press(form, "cmdAddDocument");
    const test::Box box = boxes.TakeOnly();
    EXPECT_EQ(box.text, "请输入缺省的文件名:");
    EXPECT_EQ(box.title, "文件名");
    EXPECT_EQ(box.proposed, "default.htm");
    boxes.Plan(wxID_OK, "");
    Press(form, "cmdAddDocument");
    boxes.Plan(wxID_CANCEL, "no.htm");
    Press(form, "cmdAddDocument");
    form.lstDocument->SetSelection(2);
    Press(form, "cmdUpDocument");
    Press(form, "cmdOK");
  });
  EXPECT_EQ(Home().Read("IndexFN.Log"), "a.htm\r\n新.htm\r\nb.htm\r\n");
}

TEST_F(WebOptionsDialog, MovesAndDeletesDocumentsAndLeavesNoFileOfNone) {
  Home().Write("IndexFN.Log", "a\r\nb\r\nc\r\n");
  auto& form = Form();
  Press(form, "cmdUpDocument");
  Press(form, "cmdDelDocument");
  EXPECT_THAT(Documents(), ElementsAre("a", "b", "c")) << "nothing is selected";

  form.lstDocument->SetSelection(1);
  Press(form, "cmdUpDocument");
  EXPECT_THAT(Documents(), ElementsAre("b", "a", "c"));
  EXPECT_EQ(form.lstDocument->GetSelection(), 0);
  Press(form, "cmdUpDocument");
  EXPECT_THAT(Documents(), ElementsAre("b", "a", "c"));
  EXPECT_EQ(form.lstDocument->GetSelection(), 0);

  for (int i = 0; i < 3; ++i) Press(form, "cmdDownDocument");
  EXPECT_THAT(Documents(), ElementsAre("a", "c", "b"));
  EXPECT_EQ(form.lstDocument->GetSelection(), 2);

  Press(form, "cmdDelDocument");
  EXPECT_THAT(Documents(), ElementsAre("a", "c"));
  Press(form, "cmdDelDocument");
  Press(form, "cmdDelDocument");
  RunForm([&] { Press(form, "cmdOK"); });
  EXPECT_FALSE(Home().Has("IndexFN.Log"));
}

}  // namespace
