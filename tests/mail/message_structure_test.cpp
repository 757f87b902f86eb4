#include "mail/message_structure.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// "subject|encoding|body" and "|name (encoding): text" of each attachment.
std::string Found(const std::string& text, std::size_t pieceSize) {
  ModMail::MessageScanner scanner;
  for (std::size_t i = 0; i < text.size(); i += pieceSize) {
    scanner.Take(std::string_view(text).substr(i, pieceSize));
  }
  const auto at = [&](const ModMail::Stretch& place) {
    return text.substr(place.begin, place.Size());
  };
  const ModMail::MessageStructure message = scanner.End();
  EXPECT_EQ(message.subject, at(message.subjectPlace));
  std::string found = message.subject + "|" + message.bodyEncoding + "|" + at(message.body);
  for (const auto& one : message.attachments) {
    found += "|" + one.name + " (" + one.encoding + "): " + at(one.text);
  }
  return found;
}

// However the text is divided.
void ExpectFound(const std::string& text, const std::string& expected) {
  for (const std::size_t pieceSize : {1, 7, 65536}) {
    EXPECT_EQ(Found(text, pieceSize), expected) << text;
  }
}

TEST(MessageStructure, HasNestedPartsWithEitherLineEnd) {
  std::string text =
      "Subject: Two\r\n parts\r\n\tfolded\r\n"
      "Content-Type: multipart/mixed; boundary=\"outer\"\r\n\r\n"
      "For readers without MIME.\r\n"
      "--outer\r\nContent-Type: multipart/alternative;\r\n\tboundary=inner; charset=x\r\n\r\n"
      "--inner\r\nContent-Type: text/plain\r\nContent-Transfer-Encoding:  7bit \r\n\r\n"
      "the body\r\n--inner is no delimiter\r\n\r\n"
      "--inner\r\nContent-Type: text/html\r\n\r\n<p>\r\n--inner--\r\n\r\n"
      "--outer\r\nContent-Disposition: attachment;\r\n filename=\"a b.txt\"\r\n"
      "content-transfer-encoding: BASE64\r\n\r\nYQ==\r\n"
      "--outer  \r\nContent-Disposition: attachment; filename=c.txt; size=1\r\n\r\n"
      "\r\nplain\r\n\r\n"
      "--outer--\r\nAfter the last part.\r\n.\r\n";
  std::string found =
      "Two\r\n parts\r\n\tfolded|7bit|the body\r\n--inner is no delimiter\r\n"
      "|a b.txt (BASE64): YQ==|c.txt (): \r\nplain\r\n";
  ExpectFound(text, found);
  std::erase(text, '\r');
  std::erase(found, '\r');
  ExpectFound(text, found);
}

TEST(MessageStructure, IsFoundInMessagesThatMayBeCutShort) {
  std::string eleven = "A: boundary=b\n\n";
  std::string ten = "||";
  for (int i = 1; i <= 11; ++i) {
    const std::string name = std::to_string(i);
    eleven += "--b\nA: filename=" + name + "\n\n.\n";
    if (i <= 10) ten += "|" + name + " (): .";
  }
  const std::string z(65535, 'z');  // the end of its line is divided between two pieces
  const std::pair<std::string, std::string> cases[] = {
      {"Subject: x\r\n\r\nbody\r\n\r\nmore\r\n.\r\n", "x||body\r\n\r\nmore\r\n"},
      {"\r\nbody", "||body"},
      {"no empty line\r\n.\r\n", "||no empty line\r\n"},
      {"A: b; boundary=\"\"\n\n--\nbody\n", "||--\nbody\n"},
      // Two boundaries and ten attachments are kept.
      {"A: boundary=1 boundary=2 boundary=3\n\n--3\n\nX\n--2\nA: filename=y\n\nY", "|||y (): Y"},
      {eleven + "--b--\n", ten},
      {"A: boundary=b\r\n\r\n--b\r\nA: filename=\"cut\r\n\r\nYQ==\r\n.\r\n", "|||cut (): YQ=="},
      {"A: boundary=b\n\n--b\r\nA: filename=z\r\n\r\n" + z + "\r\n--b--", "|||z (): " + z},
  };
  for (const auto& [text, found] : cases) ExpectFound(text, found);
}

// In most messages with a picture the text is below the two boundaries that count.
TEST(MessageStructure, HasTheFirstTextOfDeeperPartsIfThereIsNoOtherBody) {
  const std::string begin =
      "A: boundary=1\n\n--1\nContent-Type: multipart/related; boundary=2\n\n"
      "--2\nContent-Type: multipart/alternative; boundary=3\n\nno\n";
  const std::string end = "--2--\n--1\nA: filename=a\n\nattached\n--1--\n";
  const std::string inner = "--3\nA: filename=a\n\nno\n";
  const std::string picture = "\n\nno\n--3--\n--2\nContent-Type: image/png\n\nno\n";
  const std::pair<std::string, const char*> cases[] = {
      {"--3\nContent-Type: text/plain\n\nyes\n\n--3\nContent-Type: text/html" + picture, "yes\n"},
      {inner + "--3\nContent-Type: image/png\n\nno\n--3\n\nyes\n--3--\n", "yes"},
      {inner + "--2\n\nanother body\n", "another body"},
      {"--3\nA: b\n" + inner, ""},
  };
  for (const auto& [parts, body] : cases) {
    std::string found = "||";
    found.append(body).append("|a (): attached");
    ExpectFound(begin + parts + end, found);
  }
}

// Quadratic time would exceed the time limit of the test.
TEST(MessageStructure, ReadsDeeplyNestedPartsInLinearTime) {
  constexpr int kMany = 200000;
  std::string nested = "A: boundary=1 boundary=2\n\n--2\n";
  for (int i = 0; i < kMany; ++i) {
    const std::string name = std::string(40 + i % 2, 'b') + std::to_string(i);
    nested.append("Content-Type: multipart/x; boundary=").append(name);
    nested.append("\n\n--").append(name).append("\n");
  }
  for (int i = 0; i < kMany; ++i) nested += "--b\n";  // no delimiter
  nested += "\nyes\n--2--";
  EXPECT_EQ(Found(nested, 65536), "||yes");
}

}  // namespace
