#include "mail/attachment_name.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ModMail::AttachmentName;
using ModMail::HarmlessFileName;

TEST(AttachmentName, IsReadInTheFirstCharacterSetInWhichItIsValid) {
  EXPECT_EQ(AttachmentName("plain.txt"), "plain.txt");
  EXPECT_EQ(AttachmentName("=?gb2312?B?xOO6wy50eHQ=?="), "你好.txt");
  EXPECT_EQ(AttachmentName("你好.txt"), "你好.txt");
  EXPECT_EQ(AttachmentName("\xC4\xE3\xBA\xC3.txt"), "你好.txt");
}

TEST(AttachmentName, CannotLeaveItsFolderOrNameADevice) {
  const struct {
    std::string name;
    std::string harmless;
  } cases[] = {
      {"report.pdf", "report.pdf"},
      {"你好.txt", "你好.txt"},
      {"../../etc/passwd", ".._.._etc_passwd"},
      {"..\\..\\boot.ini", ".._.._boot.ini"},
      {"/etc/passwd", "_etc_passwd"},
      {"C:\\x.exe", "C__x.exe"},
      {"a.txt:stream", "a.txt_stream"},
      {"..", "_"},
      {".", "_"},
      {"", "_"},
      {"   ", "_"},
      {"name. . ", "name"},
      {std::string("a\0b\r\n.txt", 9), "a_b__.txt"},
      {"what?*<>|\".txt", "what______.txt"},
      {"CON", "_CON"},
      {"nul.txt", "_nul.txt"},
      {"NUL .txt", "_NUL .txt"},
      {"com1", "_com1"},
      {"LPT9.log", "_LPT9.log"},
      {"COM²", "_COM²"},
      {"COMPUTER", "COMPUTER"},
      {"com10", "com10"},
  };
  for (const auto& one : cases) EXPECT_EQ(HarmlessFileName(one.name), one.harmless) << one.name;
}

TEST(AttachmentName, IsShortenedBeforeItsExtensionByWholeCharacters) {
  std::string name;
  for (int i = 0; i < 300; ++i) name += "你";
  const std::string harmless = HarmlessFileName(name + ".txt");
  EXPECT_LE(harmless.size(), 200U);
  EXPECT_EQ(harmless.size() % 3, 1U) << "whole characters and the four of the extension";
  EXPECT_TRUE(harmless.ends_with("你.txt"));
  EXPECT_LE(HarmlessFileName(std::string(10, 'a') + "." + std::string(1000, 'b')).size(), 200U);
  EXPECT_LE(HarmlessFileName(std::string(1000, '\x80')).size(), 200U);
}

}  // namespace
