#include "mail/mime_message.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "mail/attachment_risk.h"
#include "mail/header_fields.h"
#include "mail/html_text.h"
#include "mail/mailbox_view.h"
#include "mail/part_copy.h"
#include "mail/shown_message.h"
#include "tests/support/temporary_folder.h"

namespace ModMail {
namespace {

// What the window shows of the messages in a file: "From|Subject|text|name:content,".
std::string ShownOf(const std::string& file) {
  const test::TemporaryFolder folder;
  folder.Write("m.eml", file);
  ShownMessage message(folder.Text("m.eml"));
  std::string shown;
  while (message.Step()) continue;
  for (std::size_t i = 0; i < message.Count(); ++i) {
    message.Choose(i);
    while (message.Step()) continue;
    shown += NameInAddress(message.Message().from) + "|" + message.Message().subject + "|" +
             message.Text() + "|";
    for (const MimePart& part : message.Attachments()) {
      PartCopy copy(message.File(), part, folder.Text("copy"));
      while (copy.Step()) continue;
      shown += FileNameOf(part) + ":" + folder.Read("copy") + ",";
    }
  }
  return shown;
}

struct Case {
  const char* what;
  std::string file;
  std::string shown;
};

const std::vector<Case> kCases = {
    {"a text, with the client's dots and without the last line",
     "From: \"Li Si\" <li@x>\r\nSubject: =?gb2312?B?xOO6ww==?=\r\n\r\n..a\r\n.b\r\n...\r\n.\r\n",
     "Li Si|你好|.a\n.b\n..\n|"},
    {"no header", "hello\r\nyou: x\r\n.\r\n", "||hello\nyou: x\n|"},
    {"a second message in the same file, but not behind any dot",
     "Subject: a\n\none\n.\nno header\n.\nSubject: b\n\ntwo\n.\n",
     "|a|one\n.\nno header\n||b|two\n|"},
    {"quoted-printable with soft breaks, in lower case, and what is none",
     "Content-Type: text/plain; charset=\"UTF-8\"\r\nContent-Transfer-Encoding: "
     "Quoted-Printable\r\n"
     "\r\n=e4=BD=\r\n=A0 \r\n..= \r\n=zz =4\r\n.\r\n",
     "||你 \n.=zz =4\n|"},
    {"base64 in Big5, an unknown set, a wrong one",
     "Content-Type: multipart/mixed;\r\n boundary=x\r\n\r\n--x\r\nContent-Type: text/plain; "
     "charset=big5\r\nContent-Transfer-Encoding: base64\r\n\r\np0G\r\nm!bg==\r\n--x\r\n"
     "Content-Type: text/plain; charset=none\r\n\r\n你\r\n--x\r\n"
     "Content-Type: text/plain; charset=utf-8\r\n\r\n\xC4\xE3\r\n--x--\r\nepilogue\r\n.\r\n",
     "||你好\n\n你\n\n你\n|"},
    {"the plain one of alternatives, with pictures and files beside it",
     "Content-Type: multipart/mixed; boundary=\"o u\"\r\n\r\npreamble\r\n--o u\r\n"
     "Content-Type: multipart/related; boundary=r\r\n\r\n--r\r\n"
     "Content-Type: multipart/alternative; boundary=a\r\n\r\n--a\r\n\r\nplain\r\n--a\r\n"
     "Content-Type: text/html\r\n\r\n<b>html</b>\r\n--a--\r\n--r\r\n"
     "Content-Type: image/png\r\nContent-Transfer-Encoding: base64\r\n\r\nAAEC\r\n--r--\r\n--o "
     "u\r\n"
     "Content-Disposition: attachment;\r\n filename*0*=gb2312''%C4%E3;\r\n filename*1=\".zip\"\r\n"
     "\r\n..\r\n\r\n--o u\r\nContent-Type: text/plain; name=\"=?utf-8?Q?a/=E5=A5=BD?=\"\r\n\r\nx"
     "\r\n--o u--\r\n.\r\n",
     std::string("||plain\n|附件.png:\0\1\2,你.zip:.\r\n,a_好:x,", 44)},
    {"only HTML: its text",
     "Content-Type: text/html\r\n\r\n<style>b{}</style><p>1 &lt; 2&nbsp;<3 &#20320;<br>a<script>x<"
     "/script>  b<!-- c --><p>d\r\n.\r\n",
     "||1 < 2 <3 你\na b\n\nd\n|"},
    {"hidden characters and names that lead elsewhere",
     "Content-Type: multipart/mixed; boundary=x\n\n--x\n\na\tb\x01\xE2\x80\xAE\n--x\n"
     "Content-Disposition: attachment; filename=\"..\\\\..\\\\\xE2\x80\xAEtxt.exe\"\n\n!\n--x--\n",
     "||a    b??\n|.._..__txt.exe:!,"},
};

TEST(MimeMessage, IsShownAsMailProgramsShowIt) {
  for (const Case& each : kCases) EXPECT_EQ(ShownOf(each.file), each.shown) << each.what;
}

TEST(MimeMessage, IsTheSameHoweverItIsCut) {
  for (const Case& each : kCases) {
    MimeScanner scanner;
    for (const char c : each.file) scanner.Take({&c, 1});
    const std::vector<MimeMessage> inBytes = scanner.End();
    const std::vector<MimeMessage> whole = ReadMime(each.file);
    ASSERT_EQ(inBytes.size(), whole.size());
    for (std::size_t i = 0; i < whole.size(); ++i) {
      ASSERT_EQ(inBytes[i].parts.size(), whole[i].parts.size()) << each.what;
      for (std::size_t k = 0; k < whole[i].parts.size(); ++k) {
        EXPECT_EQ(inBytes[i].parts[k].text.begin, whole[i].parts[k].text.begin) << each.what;
        EXPECT_EQ(inBytes[i].parts[k].text.end, whole[i].parts[k].text.end) << each.what;
      }
    }
  }
}

// Each is far beyond what is kept of it; quadratic time would exceed the time limit.
TEST(MimeMessage, ThatIsHostileIsReadInLinearTimeAndShownInPart) {
  constexpr int kMany = 1000000;
  const auto many = [](int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
  };
  std::string nested;
  for (int i = 0; i < 10000; ++i) {
    const std::string name = std::to_string(i) + "\n";
    nested.append("Content-Type: multipart/mixed; boundary=").append(name);
    nested.append("\n--").append(name);
  }
  EXPECT_EQ(ReadMime(nested + "\nx")[0].parts.size(), 1U);
  EXPECT_EQ(ReadMime(many(kMany, "A: b\n") + "\nx")[0].parts.size(), 1U);
  EXPECT_EQ(ReadMime(many(kMany, ".\nA: b\n")).size(), MimeScanner::kMostMessages);
  const std::string parts =
      "Content-Type: multipart/mixed; boundary=x\n\n" + many(kMany, "--x\n\n");
  EXPECT_TRUE(ReadMime(parts)[0].isCut);
  EXPECT_EQ(ReadMime(parts)[0].parts.size(), MimeScanner::kMostParts);
  const std::string text = "Subject: a\n\n" + many(kMany, "x");
  EXPECT_EQ(ShownOf(text).size(), 4 + ShownMessage::kMostText * 2001 / 2000 + 1);
  for (const char* piece : {"<", "<script>", "<!--", "&", "</style", "&#"}) {
    EXPECT_LE(TextOfHtml(many(kMany, piece)).size(), 3U * kMany);
  }
  HeaderField("Subject:" + many(kMany, "=?b?B?"), "Subject");
}

TEST(MimeMessage, HasNoCharacterDividedWhereItsTextIs) {
  for (const char* blank : {" ", ""}) {
    std::string text = "Subject: a\n\n";
    for (int i = 0; i < 200000; ++i) text += "x你" + std::string(blank);
    const std::string shown = ShownOf(text);
    const std::string ofText = "xa|\n 你";
    EXPECT_EQ(shown.find_first_not_of(ofText), std::string::npos);
    EXPECT_GT(shown.size(), ShownMessage::kMostText);
  }
}

TEST(MimeMessage, HasADateThatIsReadOrNone) {
  using std::chrono::sys_days, std::chrono::hours, std::chrono::minutes;
  const text::WallTime day = sys_days(std::chrono::year(2026) / 2 / 28);
  EXPECT_EQ(MailDate("Sat, 28 Feb 2026 07:05 +0800 (CST)"), day - minutes(55));
  EXPECT_EQ(MailDate("28 feb 26 23:00:00 GMT"), day + hours(23));
  for (const char* none : {"", "Sat", "31 Feb 2026 07:05", "1 Jan 99999 1:1", "1 Jan 2026 24:00"}) {
    EXPECT_FALSE(MailDate(none)) << none;
  }
}

TEST(AttachmentRisk, IsThatOfTheLastExtension) {
  EXPECT_EQ(RiskOf("a.exe.JPG"), AttachmentRisk::kHarmless);
  EXPECT_EQ(RiskOf("a.jpg.Exe"), AttachmentRisk::kExecutes);
  for (const char* unknown : {"a", "a.", "a.docm", "jpg"}) {
    EXPECT_EQ(RiskOf(unknown), AttachmentRisk::kUnknown) << unknown;
  }
}

TEST(MailboxView, HasTheMessagesOfOneOrAllNewestFirstAndNoticesChanges) {
  const test::TemporaryFolder root;
  const auto subjects = [](MailboxView& view) {
    view.Begin();
    while (view.Step()) continue;
    EXPECT_FALSE(view.HasChanged());
    std::string all;
    for (const MessageSummary& message : view.Messages()) {
      all += message.user + "/" + message.subject + " ";
    }
    return all;
  };
  root.Write("User/li/Message_1.eml", "Date: 1 Jan 2026 10:00\nSubject: old\n\n");
  root.Write("User/li/Message_2.eml", "Date: 2 Jan 2026 10:00\nSubject: =?koi8-r?B?xNc=?=\n\n");
  root.Write("User/li/notes.txt", "Subject: x\n\n");
  root.Write("User/wang/Message_1.EML", "Date: 1 Jan 2026 12:00\nSubject: a\tb\x01\n\n");
  MailboxView one(root.Text(), "li");
  MailboxView all(root.Text(), "");
  EXPECT_EQ(subjects(one), "li/дв li/old ");
  EXPECT_EQ(subjects(all), "li/дв wang/a?b? li/old ");
  root.Write("User/li/Message_1.eml", "Date: 3 Jan 2026 10:00\nSubject: grown\n\n");
  EXPECT_TRUE(one.HasChanged() && all.HasChanged());
  EXPECT_EQ(subjects(one), "li/grown li/дв ");
  root.Write("User/zhao/Message_1.eml", "");
  EXPECT_TRUE(all.HasChanged() && !one.HasChanged());
}

}  // namespace
}  // namespace ModMail
