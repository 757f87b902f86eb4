#include "mail/attachment_name.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ModMail::AttachmentName;
using ModMail::HarmlessFileName;

TEST(AttachmentName, IsReadInTheFirstCharacterSetInWhichItIsValid) {
  for (const char* name : {"=?gb2312?B?xOO6wy50eHQ=?=", "你好.txt", "\xC4\xE3\xBA\xC3.txt"}) {
    EXPECT_EQ(AttachmentName(name), "你好.txt") << name;
  }
}

// Long ones are shortened before their extensions, by whole characters.
TEST(AttachmentName, CannotLeaveItsFolderOrNameADevice) {
  const auto a = [](std::size_t count) { return std::string(count, 'a'); };
  const std::pair<std::string, std::string> cases[] = {
      {"a.txt:stream", "a.txt_stream"},
      {".", "_"},
      {"   ", "_"},
      {"name. . ", "name"},
      {std::string("a\0b\r\n.txt", 9), "a_b__.txt"},
      {"what?*<>|\".txt", "what______.txt"},
      {"NUL .txt", "_NUL .txt"},
      {"LPT9.log", "_LPT9.log"},
      {"COM²", "_COM²"},
      {"COMPUTER", "COMPUTER"},
      {std::string(1000, '\x80'), "_"},
      {a(195) + "你你.txt", a(195) + ".txt"},
      {a(193) + "你你.txt", a(193) + "你.txt"},
      {"a." + a(1000), "a." + a(198)},
  };
  for (const auto& [name, harmless] : cases) EXPECT_EQ(HarmlessFileName(name), harmless) << name;
}

}  // namespace
