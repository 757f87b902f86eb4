#include "core/code_page.h"

#include <gtest/gtest.h>

namespace {

using core::FromGbk;
using core::GbkCharacter;

TEST(CodePage, GbkIsReadCharacterByCharacterWithAMarkForWhatIsNone) {
  EXPECT_EQ(FromGbk("a\xC4\xE3"
                    "b"),
            "a你b");
  EXPECT_EQ(FromGbk("\xC4"), "?");
  EXPECT_EQ(FromGbk("\xFF"
                    "a"),
            "?a");
  EXPECT_EQ(GbkCharacter(0xC4, 0xE3), "你");
  EXPECT_EQ(GbkCharacter(0x41, 0x42), std::nullopt);
  EXPECT_EQ(GbkCharacter(0x0D, 0x0A), std::nullopt);
  EXPECT_EQ(GbkCharacter(0x81, 0x20), std::nullopt);
}

TEST(CodePage, AFileOfOursIsReadInWhateverSetItsBytesAreValid) {
  EXPECT_EQ(core::DecodeFile("中"), "中");
  EXPECT_EQ(core::DecodeFile("\xEF\xBB\xBF中"), "中");
  EXPECT_EQ(core::DecodeFile("\xD6\xD0"), "中");
}

TEST(CodePage, ValidUtf8IsToldFromOverlongCutAndSurrogateForms) {
  for (const char* good : {"", "a", "é", "中", "😀"}) EXPECT_TRUE(core::IsValidUtf8(good)) << good;
  for (const char* bad : {"\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xE4\xB8", "\xED\xA0\x80",
                          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "a\xFF"}) {
    EXPECT_FALSE(core::IsValidUtf8(bad)) << bad;
  }
}

TEST(CodePage, ConversionToGbkMarksWhatItDoesNotHold) {
  EXPECT_EQ(core::Encode(platform::Charset::kGbk, "中😀"), "\xD6\xD0?");
  EXPECT_EQ(core::Encode(platform::Charset::kUtf8, "\xFF"), "\xFF");
}

}  // namespace
