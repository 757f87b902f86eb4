#include "mail/message_structure.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ModMail::MessageScanner;
using ModMail::MessageStructure;
using ModMail::Stretch;

std::string At(const Stretch& place, const std::string& text) {
  return text.substr(place.begin, place.Size());
}

MessageStructure Read(std::string_view text, std::size_t pieceSize) {
  MessageScanner scanner;
  for (std::size_t i = 0; i < text.size(); i += pieceSize) scanner.Take(text.substr(i, pieceSize));
  return scanner.End();
}

std::string Attached(const MessageStructure& message, const std::string& text) {
  std::string all;
  for (const auto& one : message.attachments) {
    all += one.name + " (" + one.encoding + "): " + At(one.text, text) + "|";
  }
  return all;
}

struct Case {
  std::string text, body, attached;
};

// However the text is divided, and with either line end.
void ExpectFound(const Case& one) {
  for (const std::size_t pieceSize : {1U, 7U, 65536U}) {
    const MessageStructure message = Read(one.text, pieceSize);
    EXPECT_EQ(At(message.body, one.text), one.body) << one.text;
    EXPECT_EQ(Attached(message, one.text), one.attached) << one.text;
  }
}

const std::string kMixed =
    "Subject: Two\r\n parts\r\n\tfolded\r\n"
    "Content-Type: multipart/mixed; boundary=\"outer\"\r\n\r\n"
    "For readers without MIME.\r\n"
    "--outer\r\n"
    "Content-Type: multipart/alternative;\r\n\tboundary=inner; charset=x\r\n\r\n"
    "--inner\r\n"
    "Content-Type: text/plain\r\nContent-Transfer-Encoding: quoted-printable \r\n\r\n"
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

TEST(MessageStructure, HasTheFirstSubjectAndEncodingAndNestedParts) {
  std::string feeds = kMixed;
  std::erase(feeds, '\r');
  const Case cases[] = {{kMixed, "the body\r\n--inner is no delimiter\r\n",
                         "a b.txt (BASE64): YQ==|c.txt (): \r\nplain\r\n|"},
                        {feeds, "the body\n--inner is no delimiter\n",
                         "a b.txt (BASE64): YQ==|c.txt (): \nplain\n|"}};
  for (const Case& one : cases) {
    ExpectFound(one);
    const MessageStructure message = Read(one.text, 7);
    EXPECT_EQ(message.subject.substr(0, 3) + message.subject.substr(message.subject.size() - 7),
              "Two\tfolded");
    EXPECT_EQ(At(message.subjectPlace, one.text), message.subject);
    EXPECT_EQ(message.bodyEncoding, "quoted-printable");
  }
}

TEST(MessageStructure, FindsBodyAndAttachmentsOfMessagesThatMayBeCutShort) {
  std::string eleven = "A: boundary=b\n\n";
  std::string ten;
  for (int i = 1; i <= 11; ++i) {
    const std::string name = std::to_string(i);
    eleven += "--b\nA: filename=" + name + "\n\n.\n";
    if (i <= 10) ten += name + " (): .|";
  }
  const std::string z(65535, 'z');  // the end of its line is divided between two pieces
  const Case cases[] = {
      {"Subject: x\r\n\r\nbody\r\n\r\nmore\r\n.\r\n", "body\r\n\r\nmore\r\n", ""},
      {"\r\nbody", "body", ""},
      {"no empty line\r\n.\r\n", "no empty line\r\n", ""},
      {"A: b\r\n\r\nends in a stop.\r\n", "ends in a stop.\r\n", ""},
      {"A: multipart/mixed; boundary=never-used\n\nbody\n", "body\n", ""},
      {"A: b; boundary=\"\"\n\n--\nbody\n", "--\nbody\n", ""},
      {".\r\n", "", ""},
      {"", "", ""},
      // Two boundaries and ten attachments are kept.
      {"A: boundary=1 boundary=2 boundary=3\n\n"
       "--3\nA: filename=x\n\n--2\nA: filename=y\n\nY\n--1--\n",
       "", "y (): Y|"},
      {eleven + "--b--\n", "", ten},
      {"A: boundary=b\r\n\r\n--b\r\nA: filename=\"cut\r\n\r\nYQ==\r\n.\r\n", "", "cut (): YQ==|"},
      {"A: boundary=b\n\n--b\nA: filename=c", "", ""},
      {"A: boundary=b\n\n--b\r\nA: filename=z\r\n\r\n" + z + "\r\n--b--", "", "z (): " + z + "|"}};
  for (const Case& one : cases) ExpectFound(one);
}

// In most messages with a picture the text is below the two boundaries that count.
TEST(MessageStructure, FindsTheFirstTextOfDeeperPartsIfThereIsNoOtherBody) {
  const std::string begin =
      "A: boundary=1\n\n--1\nContent-Type: multipart/related; boundary=2\n\n"
      "--2\nContent-Type: multipart/alternative; boundary=3\n\nno\n";
  const std::string end = "--2--\n--1\nA: filename=a\n\nattached\n--1--\n";
  const std::string inner = "--3\nA: filename=a\n\nno\n";
  const std::string picture = "--2\nContent-Type: image/png\n\nno\n";
  std::string levels;
  for (int i = 4; i < 24; ++i) {
    levels += "--" + std::to_string(i - 1) +
              "\nContent-Type: multipart/x; boundary=" + std::to_string(i) + "\n\n--" +
              std::to_string(i) + "\nA: filename=a\n\nno\n";
  }
  const std::pair<std::string, const char*> cases[] = {
      {"--3\nContent-Type: text/plain\n\nyes\n\n--3\nContent-Type: text/html\n\nno\n--3--\n" +
           picture,
       "yes\n"},
      {inner + "--3\nContent-Type: image/png\n\nno\n--3\n\nyes\n--3--\n", "yes"},
      {inner + "--2\n\nanother body\n", "another body"},
      {"--3\n\nno\n--3--\n--2\n\nanother body\n", "another body"},
      {levels + "--23\n\nyes\n", "yes"},
      {levels + "--23--\n--22--\n--20\n\nyes\n", "yes"},
      {"--3--\n--3\n\nbehind the end\n" + inner, ""},
      {"--3\nA: b\n" + inner, ""}};
  for (const auto& [parts, body] : cases)
    ExpectFound({begin + parts + end, body, "a (): attached|"});
}

// Quadratic time would exceed the time limit of the test.
TEST(MessageStructure, ReadsDeeplyNestedPartsInLinearTime) {
  constexpr int kMany = 200000;
  std::string nested = "A: boundary=1 boundary=2\n\n--2\n";
  for (int i = 0; i < kMany; ++i) {
    const std::string name = std::string(40 + i % 2, 'b') + std::to_string(i);
    nested += "Content-Type: multipart/x; boundary=" + name + "\n\n--" + name + "\n";
  }
  for (int i = 0; i < kMany; ++i) nested += "--b\n";  // no delimiter
  nested += "\nyes\n--2--";
  EXPECT_EQ(At(Read(nested, 65536).body, nested), "yes");
}

}  // namespace
