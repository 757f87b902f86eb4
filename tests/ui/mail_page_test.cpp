// The messages on the mail page as a user meets them: the list, the dialog that shows one, its
// attachments, and what to type into a mail program.

#include <wx/clipbrd.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "tests/ui/main_window_fixture.h"
#include "ui/pages/message_panel.h"

namespace test {
namespace {

using testing::HasSubstr;

constexpr const char* kWithFiles =
    "From: =?gbk?B?wO4=?= <li@home.test>\r\nDate: 2 Jan 2026 10:00 +0000\r\n"
    "Subject: =?utf-8?B?54Wn54mH?=\r\nContent-Type: multipart/mixed; boundary=x\r\n\r\n--x\r\n\r\n"
    "..看\r\n--x\r\nContent-Disposition: attachment; filename=\"a/b.exe\"\r\n"
    "Content-Transfer-Encoding: base64\r\n\r\nAAEC\r\n/w==\r\n--x--\r\n.\r\n";

class MailPage : public MainWindow {
 protected:
  MailPage() {
    Home().Write("mail/User/li/UserInfo.ini", "[用户信息]\r\nPassword=secret\r\n");
    Home().Write("mail/User/wang/Message_1.eml", kWithFiles);
    Home().Write("mail/User/wang/Message_1/a.txt", "unpacked");
    Home().Write("mail/User/li/Message_1.eml", "Date: 1 Jan 2026 10:00\r\n\r\none\r\n.\r\n");
    Home().Write("mail/Accessary/a.txt", "");
    Click("ImgMail");
    EXPECT_TRUE(Until([&] { return List("lstMessages").GetItemCount() == 2; }));
  }

  /// "subject/from/to" of each row.
  std::string Messages() {
    wxString all;
    for (int row = 0; row < List("lstMessages").GetItemCount(); ++row) {
      for (int column = 0; column < 3; ++column) {
        all += List("lstMessages").GetItemText(row, column) + (column < 2 ? "/" : " ");
      }
    }
    return ui::Typed(all);
  }

  void Select(const std::string& list, long row) {
    List(list).SetItemState(row, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
  }

  /// A double click on a row of a list.
  static void Activate(wxWindow& list, long row) {
    wxListEvent event(wxEVT_LIST_ITEM_ACTIVATED, list.GetId());
    event.m_itemIndex = row;
    event.SetEventObject(&list);
    dynamic_cast<wxListCtrl&>(list).SetItemState(row, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    list.ProcessWindowEvent(event);
  }

  /// A double click on the first message, and `script` in the dialog once the message is read.
  void InMessage(const std::function<void(wxDialog&)>& script) {
    bool ran = false;
    boxes.ScriptForm([&](wxDialog& form) {
      EXPECT_TRUE(Until([&] { return !TextIn(form, "txtHeader").empty(); }));
      script(form);
      ran = true;
      if (form.IsModal()) form.EndModal(wxID_CANCEL);
    });
    Activate(Find("lstMessages"), 0);
    EXPECT_TRUE(ran);
  }

  static std::string TextIn(wxWindow& form, const std::string& field) {
    return ui::Typed(dynamic_cast<wxTextCtrl&>(Find(form, field)).GetValue());
  }
};

TEST_F(MailPage, ListsTheMessagesOfAllOrOfTheSelectedUserAndWhatArrives) {
  EXPECT_TRUE(Until([&] { return Messages() == "照片/李/wang （没有主题）//li "; })) << Messages();
  EXPECT_EQ(Label("lblMailbox"), "所有用户共有 2 封邮件。");
  EXPECT_GT(List("lstMessages").GetColumnWidth(2), 0);
  Select("lvMailUser", 0);
  EXPECT_TRUE(Until([&] { return Messages() == "（没有主题）//li "; })) << Messages();
  EXPECT_EQ(List("lstMessages").GetColumnWidth(2), 0) << "all are one user's";
  Select("lstMessages", 0);
  Home().Write("mail/User/li/Message_2.eml", "Date: 3 Jan 2026 10:00\r\nSubject: new\r\n\r\n");
  window->content->messages->LookAnew();
  EXPECT_TRUE(Until([&] { return Messages() == "new//li （没有主题）//li "; })) << Messages();
  EXPECT_EQ(List("lstMessages").GetItemState(1, wxLIST_STATE_SELECTED), wxLIST_STATE_SELECTED);
}

TEST_F(MailPage, ShowsAMessageAndSavesItsAttachmentByteForByteOrOpensItAfterAQuestion) {
  InMessage([&](wxDialog& form) {
    EXPECT_THAT(TextIn(form, "txtHeader"), HasSubstr("主题：照片\n发件人：李 <li@home.test>"));
    EXPECT_EQ(TextIn(form, "txtText"), ".看\n");
    boxes.Plan(wxID_OK, Home().Path("saved").string());
    Press(form, "cmdSaveAttachment");
    EXPECT_EQ(boxes.Take(), "另存为: 所有文件|* [a_b.exe]");
    EXPECT_TRUE(Until([&] { return Home().Read("saved") == std::string("\0\1\2\xFF", 4); }));
    boxes.Plan(wxID_NO);
    Activate(Find(form, "lstAttachments"), 0);
    EXPECT_THAT(boxes.Take(), HasSubstr("“a_b.exe”是程序"));
  });
}

TEST_F(MailPage, RemovesAMessageWithItsUnpackedFolderAndNothingElse) {
  for (const int answer : {wxID_NO, wxID_YES}) {
    InMessage([&](wxDialog& form) {
      boxes.Plan(answer);
      Press(form, "cmdDelMessage");
      EXPECT_EQ(form.IsModal(), answer == wxID_NO);
    });
    EXPECT_THAT(boxes.Take(), HasSubstr("确实要删除这封邮件吗？"));
    EXPECT_EQ(Home().Has("mail/User/wang/Message_1"), answer == wxID_NO);
    EXPECT_EQ(Home().Has("mail/User/wang/Message_1.eml"), answer == wxID_NO);
  }
  EXPECT_TRUE(Home().Has("mail/Accessary/a.txt") && Home().Has("mail/User/wang"));
  EXPECT_TRUE(Until([&] { return Messages() == "（没有主题）//li "; })) << Messages();
  Select("lstMessages", 0);
  Home().Write("mail/User/li/Message_1.eml", "Subject: another, not seen yet\r\n\r\n");
  boxes.Plan(wxID_YES);
  Push("cmdRemoveMessage");
  EXPECT_THAT(boxes.Take(), HasSubstr("刚刚变了"));
  EXPECT_TRUE(Until([&] { return Messages() == "another, not seen yet//li "; })) << Messages();
  std::filesystem::remove(Home().Path("mail/User/li/Message_1.eml"));
  Activate(Find("lstMessages"), 0);
  EXPECT_THAT(boxes.Take(), HasSubstr("这封邮件已经不在了"));
  EXPECT_TRUE(Until([&] { return Messages().empty(); })) << Messages();
}

TEST_F(MailPage, TellsWhatToTypeIntoAMailProgram) {
  for (const bool runs : {false, true}) {
    if (runs) Push("cmdStartMailService");
    const std::string ports = "txtIncomingPort=" + std::to_string(mail.Pop3Port()) +
                              "|txtOutgoingPort=" + std::to_string(mail.SmtpPort());
    ExpectShown("cmdMailSettings",
                "txtAddress=li@home.test|txtUserName=li|txtPassword=secret|" + ports);
  }
  InForm("cmdMailSettings", [&](wxDialog& form) {
    Press(form, "cmdCopyAll");
    wxTextDataObject copied;
    const wxClipboardLocker clipboard;
    EXPECT_TRUE(wxTheClipboard->GetData(copied));
    EXPECT_THAT(ui::Typed(copied.GetText()), HasSubstr("用户名：li\n密码：secret\n"));
  });
}

}  // namespace
}  // namespace test
