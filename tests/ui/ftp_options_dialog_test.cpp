#include "ui/ftp_options_dialog.h"

#include "tests/ui/dialog_fixture.h"

namespace {

class FtpOptionsDialog : public test::DialogFixture {
 protected:
  ModFtp::FtpServer server_{Environment()};
};

TEST_F(FtpOptionsDialog, ShowsWhatIsHeldInMemory) {
  Home().Write("Server.ini",
               "[FtpServer Options]\nFtpPort=2121\nDNS=f.example\nFtpServer Root=/srv/ftp\n"
               "FtpServer UploadDir=/srv/ftp/up\nRead=1\nWrite=0\nContralAll=1\n");
  server_.LoadOptions();
  Home().Write("Server.ini", "[FtpServer Options]\nFtpPort=9\n");
  ui::frmFtpOptions form(nullptr, Program(), server_);
  EXPECT_EQ(TextIn(form, "txtFtpPort"), "2121");
  EXPECT_EQ(TextIn(form, "txtFtpAddress"), "f.example");
  EXPECT_EQ(TextIn(form, "txtFtpDir"), "/srv/ftp");
  EXPECT_EQ(TextIn(form, "txtFtpUploadDir"), "/srv/ftp/up");
  EXPECT_TRUE(IsSet(form, "chkRead"));
  EXPECT_FALSE(IsSet(form, "chkWrite"));
  EXPECT_TRUE(IsSet(form, "chkContralAll"));
}

TEST_F(FtpOptionsDialog, RefusesDomainThenRootThenUploadDirectory) {
  ui::frmFtpOptions form(nullptr, Program(), server_);
  struct Case {
    const char* field;
    const char* message;
  };
  EXPECT_EQ(Run(form,
                [&] {
                  const Case cases[] = {{"txtFtpAddress", "本地域名不能为空！"},
                                        {"txtFtpDir", "主目录不能为空！"},
                                        {"txtFtpUploadDir", "上传目录不能为空！"}};
                  for (const Case& c : cases) Type(form, c.field, "  ");
                  for (const Case& c : cases) {
                    Press(form, "cmdOK");
                    const test::Box box = boxes.TakeOnly();
                    EXPECT_EQ(box.text, c.message);
                    EXPECT_EQ(box.title, "Ftp服务器选项");
                    EXPECT_EQ(box.style & wxICON_MASK, wxICON_EXCLAMATION);
                    EXPECT_EQ(FocusedName(), c.field);
                    Type(form, c.field, "x");
                  }
                }),
            kStayedOpen);
  EXPECT_FALSE(Home().Has("Server.ini"));
}

TEST_F(FtpOptionsDialog, WritesItsKeysInOrderAndAsTypedAndChangesNothingInMemory) {
  Home().Write("Server.ini", "");
  ui::frmFtpOptions form(nullptr, Program(), server_);
  EXPECT_EQ(Run(form,
                [&] {
                  Type(form, "txtFtpIP", "192.0.2.1");
                  Type(form, "txtFtpPort", "no port");
                  Type(form, "txtFtpAddress", " f.example");
                  Type(form, "txtFtpDir", "/srv/ftp");
                  Type(form, "txtFtpUploadDir", "/srv/ftp/上传");
                  Set(form, "chkWrite", true);
                  Press(form, "cmdOK");
                }),
            wxID_OK);
  EXPECT_EQ(Home().Read("Server.ini"),
            "[FtpServer Options]\r\nIP=192.0.2.1\r\nFtpPort=no port\r\nDNS= f.example\r\n"
            "FtpServer Root=/srv/ftp\r\nFtpServer UploadDir=/srv/ftp/上传\r\nRead=0\r\nWrite=1\r\n"
            "ContralAll=0\r\n");
  EXPECT_EQ(server_.Options().ftpPort, 21);
  EXPECT_EQ(server_.Options().uploadDir, "");
}

TEST_F(FtpOptionsDialog, ChoosesBothFolders) {
  ui::frmFtpOptions form(nullptr, Program(), server_);
  Home().Write("up/a", "");
  boxes.Plan(wxID_OK, UserPath());
  Press(form, "cmdBrowser");
  EXPECT_EQ(boxes.TakeOnly().title, "请选择FTP的站点位置");
  EXPECT_EQ(TextIn(form, "txtFtpDir"), UserPath());
  boxes.Plan(wxID_OK, UserPath("up"));
  Press(form, "cmdBrower2");
  EXPECT_EQ(boxes.TakeOnly().title, "请选择FTP站点文件上传的位置");
  EXPECT_EQ(TextIn(form, "txtFtpUploadDir"), UserPath("up"));
}

}  // namespace
