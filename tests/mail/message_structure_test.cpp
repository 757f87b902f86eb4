#include "mail/message_structure.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ModMail::MessageScanner;
using ModMail::MessageStructure;
using ModMail::ReadStructure;

std::string WithLineFeedsAlone(std::string text) {
  std::erase(text, '\r');
  return text;
}

const std::string kMixed =
    "Subject: Two\r\n parts\r\n"
    "Content-Type: multipart/mixed; boundary=\"outer\"\r\n\r\n"
    "For readers without MIME.\r\n"
    "--outer\r\n"
    "Content-Type: multipart/alternative;\r\n\tboundary=inner; charset=x\r\n\r\n"
    "--inner\r\n"
    "Content-Type: text/plain\r\nContent-Transfer-Encoding: quoted-printable\r\n\r\n"
    "the body\r\n--inner is no delimiter\r\n\r\n"
    "--inner\r\n"
    "Content-Type: text/html\r\n\r\n<p>\r\n"
    "--inner--\r\n\r\n"
    "--outer\r\n"
    "Content-Disposition: attachment;\r\n filename=\"a b.txt\"\r\n"
    "content-transfer-encoding: BASE64\r\n\r\n"
    "YQ==\r\n"
    "--outer  \r\n"
    "Content-Disposition: attachment; filename=c.txt; size=1\r\n\r\n"
    "\r\nplain\r\n\r\n"
    "--outer--\r\n"
    "After the last part.\r\n.\r\n";

TEST(MessageStructure, ReadsNestedPartsWithEitherLineEnd) {
  const std::string feeds = WithLineFeedsAlone(kMixed);
  for (const std::string& text : {kMixed, feeds}) {
    const std::string end = text == feeds ? "\n" : "\r\n";
    const MessageStructure message = ReadStructure(text);
    EXPECT_EQ(message.subject, "Two" + end + " parts");
    EXPECT_EQ(message.bodyEncoding, "quoted-printable");
    EXPECT_EQ(message.body, "the body" + end + "--inner is no delimiter" + end);
    ASSERT_EQ(message.attachments.size(), 2U);
    EXPECT_EQ(message.attachments[0].name, "a b.txt");
    EXPECT_EQ(message.attachments[0].encoding, "BASE64");
    EXPECT_EQ(message.attachments[0].text, "YQ==");
    EXPECT_EQ(message.attachments[1].name, "c.txt");
    EXPECT_EQ(message.attachments[1].encoding, "");
    EXPECT_EQ(message.attachments[1].text, end + "plain" + end);
  }
}

TEST(MessageStructure, IsTheSameReadInSteps) {
  MessageScanner scanner(kMixed);
  while (scanner.Step(1)) {
  }
  const MessageStructure message = scanner.Take();
  EXPECT_EQ(message.subject, "Two\r\n parts");
  EXPECT_EQ(message.attachments.size(), 2U);
}

TEST(MessageStructure, FindsTheBodyOfMessagesWithoutParts) {
  const struct {
    const char* text;
    const char* encoding;
    const char* body;
  } cases[] = {
      {"Subject: x\r\n\r\nbody\r\n\r\nmore\r\n.\r\n", "", "body\r\n\r\nmore\r\n"},
      {"Content-Transfer-Encoding:  quoted-printable \r\n\r\nbody\r\n", "quoted-printable",
       "body\r\n"},
      {"\r\nbody", "", "body"},
      {"no empty line\r\n.\r\n", "", "no empty line\r\n"},
      {"A: b\r\n\r\nends in a stop.\r\n", "", "ends in a stop.\r\n"},
      {"A: b\r\n\r\nContent-Transfer-Encoding: 7bit\r\n", "7bit",
       "Content-Transfer-Encoding: 7bit\r\n"},
      {"A: multipart/mixed; boundary=never-used\n\nbody\n", "", "body\n"},
      {"A: b; boundary=\"\"\n\n--\nbody\n", "", "--\nbody\n"},
      {".\r\n", "", ""},
      {"", "", ""},
  };
  for (const auto& one : cases) {
    const MessageStructure message = ReadStructure(one.text);
    EXPECT_EQ(message.bodyEncoding, one.encoding) << one.text;
    EXPECT_EQ(message.body, one.body) << one.text;
  }
}

TEST(MessageStructure, KeepsTwoBoundariesAndTenAttachments) {
  std::string text = "A: boundary=one boundary=two boundary=three\n\n";
  text += "--three\nA: filename=x\n\n--two\nA: filename=y\n\nY\n--one--\n";
  const MessageStructure three = ReadStructure(text);
  ASSERT_EQ(three.attachments.size(), 1U);
  EXPECT_EQ(three.attachments[0].name, "y");
  EXPECT_EQ(three.attachments[0].text, "Y");

  std::string many = "A: boundary=b\n\n";
  for (int i = 1; i <= 11; ++i) many += "--b\nA: filename=" + std::to_string(i) + "\n\n.\n";
  const MessageStructure eleven = ReadStructure(many + "--b--\n");
  ASSERT_EQ(eleven.attachments.size(), 10U);
  EXPECT_EQ(eleven.attachments.back().name, "10");
}

TEST(MessageStructure, TakesAPartToTheEndOfAMessageCutShort) {
  const MessageStructure message =
      ReadStructure("A: boundary=b\r\n\r\n--b\r\nA: filename=\"cut\r\n\r\nYQ==\r\n.\r\n");
  ASSERT_EQ(message.attachments.size(), 1U);
  EXPECT_EQ(message.attachments[0].name, "cut");
  EXPECT_EQ(message.attachments[0].text, "YQ==");
  // Nothing but a header.
  EXPECT_TRUE(ReadStructure("A: boundary=b\n\n--b\nA: filename=c").attachments.empty());
}

}  // namespace
