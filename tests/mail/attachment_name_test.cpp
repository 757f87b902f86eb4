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

TEST(AttachmentName, CannotLeaveItsFolderOrNameADevice) {
  const struct {
    std::string name, harmless;
  } cases[] = {{"report.pdf", "report.pdf"},
               {"../../etc/passwd", ".._.._etc_passwd"},
               {"..\\..\\boot.ini", ".._.._boot.ini"},
               {"C:\\x.exe", "C__x.exe"},
               {"a.txt:stream", "a.txt_stream"},
               {"..", "_"},
               {".", "_"},
               {"   ", "_"},
               {"name. . ", "name"},
               {std::string("a\0b\r\n.txt", 9), "a_b__.txt"},
               {"what?*<>|\".txt", "what______.txt"},
               {"nul.txt", "_nul.txt"},
               {"NUL .txt", "_NUL .txt"},
               {"com1", "_com1"},
               {"LPT9.log", "_LPT9.log"},
               {"COM²", "_COM²"},
               {"COMPUTER", "COMPUTER"},
               {"com10", "com10"},
               // Long ones are shortened before their extensions, by whole characters.
               {std::string(197, 'a') + "你你.txt", std::string(196, 'a') + ".txt"},
               {std::string(195, 'a') + "你你.txt", std::string(195, 'a') + ".txt"},
               {std::string(193, 'a') + "你你.txt", std::string(193, 'a') + "你.txt"},
               {"a." + std::string(1000, 'b'), "a." + std::string(198, 'b')},
               {std::string(1000, '\x80'), "_"}};
  for (const auto& one : cases) EXPECT_EQ(HarmlessFileName(one.name), one.harmless) << one.name;
}

}  // namespace
