#include "ui/web_options_dialog.h"

#include <wx/listbox.h>
#include <wx/utils.h>

#include "ftp/ftp_server.h"
#include "mail/mail_server.h"
#include "tests/ui/dialog_fixture.h"
#include "ui/toolkit_text.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

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

TEST_F(WebOptionsDialog, ShowsTheSettingsAsLoadedAtItsOpening) {
  server_.LoadOptions();
  Home().Write("Server.ini",
               "[WebServer Options]\nWebRootDir=/srv/网站\nTCPPort=8080\nDNS=x.example\nRead=True\n"
               "Write=0\nContralAll=1\n");
  Home().Write("IndexFN.Log", "a.htm\r\n首页.htm\r\n");
  auto& form = Form();
  EXPECT_EQ(TextIn(form, "txtWebRoot"), "/srv/网站");
  EXPECT_EQ(TextIn(form, "txtWebPort"), "8080");
  EXPECT_EQ(TextIn(form, "txtWebAddress"), "x.example");
  EXPECT_TRUE(IsSet(form, "chkRead"));
  EXPECT_FALSE(IsSet(form, "chkWrite"));
  EXPECT_TRUE(IsSet(form, "chkContralAll"));
  EXPECT_TRUE(IsSet(form, "chkDefaultFile"));
  EXPECT_THAT(Documents(), ElementsAre("a.htm", "首页.htm"));
}

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

TEST_F(WebOptionsDialog, RefusesPortThenDomainThenRootAndWritesNothing) {
  Home().Write("IndexFN.Log", "a.htm\r\n");
  RunForm([&] {
    auto& form = Form();
    Type(form, "txtWebPort", "  ");
    Type(form, "txtWebAddress", "");
    Type(form, "txtWebRoot", " ");

    Press(form, "cmdOK");
    test::Box box = boxes.TakeOnly();
    EXPECT_EQ(box.text, "请指定TCP端口！");
    EXPECT_EQ(box.style & wxICON_MASK, wxICON_EXCLAMATION);
    EXPECT_EQ(FocusedName(), "txtWebPort");

    Type(form, "txtWebPort", "80");
    Press(form, "cmdOK");
    box = boxes.TakeOnly();
    EXPECT_EQ(box.text, "请指定本地域名");
    EXPECT_EQ(box.style & wxICON_MASK, wxICON_INFORMATION | wxICON_QUESTION);
    EXPECT_EQ(FocusedName(), "txtWebAddress");

    Type(form, "txtWebAddress", "x.example");
    Press(form, "cmdOK");
    box = boxes.TakeOnly();
    EXPECT_EQ(box.text, "请指定WEB主目录！");
    EXPECT_EQ(box.style & wxICON_MASK, wxICON_EXCLAMATION);
    EXPECT_EQ(box.title, "Tarnwerk");
    EXPECT_TRUE(form.IsModal());
  });
  EXPECT_FALSE(Home().Has("Server.ini"));
  EXPECT_EQ(Home().Read("IndexFN.Log"), "a.htm\r\n");
}

TEST_F(WebOptionsDialog, WritesItsKeysInOrderAndAsTypedAndChangesNothingInMemory) {
  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=80\nStartDefaultPage=True\n");
  Form();
  Home().Write("Server.ini", "");
  const int result = RunForm([&] {
    auto& form = Form();
    Type(form, "txtWebRoot", "  /srv/www");
    Type(form, "txtWebIP", "192.0.2.1");
    Type(form, "txtWebPort", " 8o8o");
    Type(form, "txtWebAddress", "x.example");
    Set(form, "chkDefaultFile", false);
    Set(form, "chkRead", true);
    Set(form, "chkContralAll", true);
    Set(form, "optAppNone", true);
    Press(form, "cmdOK");
  });
  EXPECT_EQ(result, wxID_OK);
  EXPECT_EQ(Home().Read("Server.ini"),
            "[WebServer Options]\r\nWebRootDir=  /srv/www\r\nWebServerIP=192.0.2.1\r\n"
            "TCPPort= 8o8o\r\nDNS=x.example\r\nStartDefaultPage=0\r\nRead=1\r\nWrite=0\r\n"
            "ContralAll=1\r\noptNoApp=True\r\noptAppDone=False\r\n");
  EXPECT_EQ(server_.Options().WebPort, 80);
}

TEST_F(WebOptionsDialog, CancelWritesNothing) {
  EXPECT_EQ(RunForm([&] { Press(Form(), "cmdCancel"); }), wxID_CANCEL);
  EXPECT_FALSE(Home().Has("Server.ini"));
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

TEST_F(WebOptionsDialog, MovesADocumentAndKeepsItSelectedUpToTheEnds) {
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
}

TEST_F(WebOptionsDialog, AnEmptyDocumentListLeavesNoFile) {
  Home().Write("IndexFN.Log", "a.htm\r\n");
  RunForm([&] {
    Form().lstDocument->SetSelection(0);
    // The second default document stands behind it in memory only if the file says so.
    while (!Form().lstDocument->IsEmpty()) {
      Form().lstDocument->SetSelection(0);
      Press(Form(), "cmdDelDocument");
    }
    Press(Form(), "cmdOK");
  });
  EXPECT_FALSE(Home().Has("IndexFN.Log"));
}

TEST_F(WebOptionsDialog, TakesTheRootFromAFolderChooser) {
  auto& form = Form();
  const std::string before = TextIn(form, "txtWebRoot");
  boxes.Plan(wxID_CANCEL, UserPath());
  Press(form, "cmdBrowser");
  EXPECT_EQ(TextIn(form, "txtWebRoot"), before);
  test::Box box = boxes.TakeOnly();
  EXPECT_EQ(box.kind, "folder");
  EXPECT_EQ(box.title, "选择Web服务器的主目录");
  EXPECT_EQ(box.proposed, (wxGetOsVersion() & wxOS_WINDOWS) != 0 ? "C:\\" : "");
  boxes.Plan(wxID_OK, UserPath());
  Press(form, "cmdBrowser");
  EXPECT_EQ(TextIn(form, "txtWebRoot"), UserPath());
}

TEST_F(WebOptionsDialog, ShowsClearsAndExportsItsLog) {
  Home().Write("Web.log", "时间：一\r\n时间：二\r\n");
  auto& form = Form();
  ASSERT_EQ(form.lstLog->GetItemCount(), 2);
  EXPECT_EQ(form.lstLog->GetItemText(1), ui::Shown("时间：二"));
  EXPECT_FALSE(Find(form, "lblLogPart").IsShown());

  boxes.Plan(wxID_OK, UserPath("导出.log"));
  Press(form, "cmdExportLog");
  EXPECT_EQ(Home().Read("导出.log"), "时间：一\r\n时间：二\r\n");

  Press(form, "cmdClearLog");
  EXPECT_EQ(form.lstLog->GetItemCount(), 0);
  EXPECT_FALSE(Home().Has("Web.log"));
  EXPECT_THAT(boxes.Take(), testing::SizeIs(1));
  Press(form, "cmdExportLog");
  EXPECT_THAT(boxes.Take(), IsEmpty()) << "an empty list is not exported";
}

}  // namespace
