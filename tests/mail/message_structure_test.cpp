#include "mail/message_structure.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ModMail::MessageScanner;
using ModMail::MessageStructure;
using ModMail::ReadStructure;
using ModMail::Stretch;

std::string At(const Stretch& place, const std::string& text) {
  return text.substr(place.begin, place.Size());
}

std::string Attached(const MessageStructure& message, const std::string& text) {
  std::string all;
  for (const auto& one : message.attachments) {
    all += one.name + " (" + one.encoding + "): " + At(one.text, text) + "|";
  }
  return all;
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
  std::string feeds = kMixed;
  std::erase(feeds, '\r');
  for (const std::string& text : {kMixed, feeds}) {
    const std::string end = text == feeds ? "\n" : "\r\n";
    const MessageStructure message = ReadStructure(text);
    EXPECT_EQ(message.subject, "Two" + end + " parts");
    EXPECT_EQ(At(message.subjectPlace, text), message.subject);
    EXPECT_EQ(message.bodyEncoding, "quoted-printable");
    EXPECT_EQ(At(message.body, text), "the body" + end + "--inner is no delimiter" + end);
    EXPECT_EQ(Attached(message, text),
              "a b.txt (BASE64): YQ==|c.txt (): " + end + "plain" + end + "|");
  }
}

// The last part's line end is divided between the pieces of a line that is too long to be read
// whole.
TEST(MessageStructure, IsTheSameReadInSteps) {
  const std::string text =
      kMixed + "--outer\r\nA: filename=z\r\n\r\n" + std::string(65535, 'z') + "\r\n--outer--";
  for (const std::size_t size : {1, 7, 65536}) {
    MessageScanner scanner;
    for (std::size_t i = 0; i < text.size(); i += size) {
      scanner.Take(std::string_view(text).substr(i, size));
    }
    const MessageStructure message = scanner.End();
    EXPECT_EQ(message.subject, "Two\r\n parts");
    EXPECT_EQ(Attached(message, text), "a b.txt (BASE64): YQ==|c.txt (): \r\nplain\r\n|z (): " +
                                           std::string(65535, 'z') + "|");
  }
}

// In most messages with a picture the text is below the two boundaries that count.
TEST(MessageStructure, FindsTheFirstTextOfDeeperPartsIfThereIsNoOtherBody) {
  const std::string begin = "A: boundary=1\n\n--1\nContent-Type: multipart/related; boundary=2\n\n";
  const std::string deeper = begin + "--2\nContent-Type: multipart/alternative; boundary=3\n\nno\n";
  const std::string attachment = "--3\nA: filename=a\n\nno\n";
  const std::string picture = "--2\nContent-Type: image/png\n\nno\n";
  const std::string end = "--2--\n--1\nA: filename=a\n\nattached\n--1--\n";
  std::string levels;
  for (int i = 4; i < 24; ++i) {
    const std::string name = std::to_string(i);
    levels +=
        "--" + std::to_string(i - 1) + "\nContent-Type: multipart/x; boundary=" + name + "\n\n";
    levels += "--" + name + "\nA: filename=a\n\nno\n";
  }
  const struct {
    std::string parts;
    const char* body;
  } cases[] = {
      {"--3\nContent-Type: text/plain\n\nyes\n\n--3\nContent-Type: text/html\n\nno\n--3--\n" +
           picture,
       "yes\n"},
      {attachment + "--3\nContent-Type: image/png\n\nno\n--3\n\nyes\n--3--\n", "yes"},
      {"--3\n\nyes\n", "yes"},
      {attachment + "--2\n\nanother body\n", "another body"},
      {"--3\n\nno\n--3--\n--2\n\nanother body\n", "another body"},
      {levels + "--23\n\nyes\n", "yes"},
      {levels + "--23--\n--22--\n--20\n\nyes\n", "yes"},
      {"--3--\n--3\n\nbehind the end\n" + attachment, ""},
      {"--3\nA: b\n" + attachment, ""},
  };
  for (const auto& one : cases) {
    const std::string text = deeper + one.parts + end;
    const MessageStructure message = ReadStructure(text);
    EXPECT_EQ(At(message.body, text), one.body) << text;
    EXPECT_EQ(Attached(message, text), "a (): attached|") << text;
  }
}

// Quadratic time would exceed the time limit of the test.
TEST(MessageStructure, ReadsDeeplyNestedPartsInLinearTime) {
  constexpr int kMany = 200000;
  std::string nested = "A: boundary=1 boundary=2\n\n--2\n";
  for (int i = 0; i < kMany; ++i) {
    const std::string name(40 + i % 2, 'b');
    nested += "Content-Type: multipart/x; boundary=" + name + std::to_string(i) + "\n\n--" + name +
              std::to_string(i) + "\n";
  }
  for (int i = 0; i < kMany; ++i) nested += "--b\n";  // no delimiter
  const std::string deepest = nested + "\nyes\n--2--";
  EXPECT_EQ(At(ReadStructure(deepest).body, deepest), "yes");
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
    EXPECT_EQ(At(message.body, one.text), one.body) << one.text;
  }
}

TEST(MessageStructure, KeepsTwoBoundariesAndTenAttachmentsOfAMessageThatMayBeCutShort) {
  std::string many = "A: boundary=b\n\n";
  std::string ten;
  for (int i = 1; i <= 11; ++i) {
    const std::string name = std::to_string(i);
    many += "--b\nA: filename=" + name + "\n\n.\n";
    if (i <= 10) ten += name + " (): .|";
  }
  const std::pair<std::string, std::string> cases[] = {
      {"A: boundary=one boundary=two boundary=three\n\n"
       "--three\nA: filename=x\n\n--two\nA: filename=y\n\nY\n--one--\n",
       "y (): Y|"},
      {many + "--b--\n", ten},
      {"A: boundary=b\r\n\r\n--b\r\nA: filename=\"cut\r\n\r\nYQ==\r\n.\r\n", "cut (): YQ==|"},
      {"A: boundary=b\n\n--b\nA: filename=c", ""},
  };
  for (const auto& [text, attached] : cases) {
    EXPECT_EQ(Attached(ReadStructure(text), text), attached) << text;
  }
}

}  // namespace
