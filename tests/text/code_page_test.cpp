#include "text/code_page.h"

#include <gtest/gtest.h>

namespace {

using text::FromGbk;
using text::GbkCharacter;

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

TEST(CodePage, AFileOfOursIsReadInWhateverSetItsBytesAreValidUtf8First) {
  using platform::Charset;
  struct Case {
    std::string bytes;
    Charset charset;
    std::string text;
  };
  const Charset system = platform::SystemCharset();
  for (const Case& c :
       {Case{"plain", system, "plain"}, Case{"中", Charset::kUtf8, "中"},
        Case{"\xEF\xBB\xBF中", Charset::kUtf8, "中"}, Case{"\xD6\xD0", Charset::kGbk, "中"},
        // Valid in both sets.
        Case{"\xC2\xBD", Charset::kUtf8, "½"}}) {
    EXPECT_EQ(text::CharsetOf(c.bytes), c.charset) << c.text;
    EXPECT_EQ(text::DecodeFile(c.bytes), c.text);
    EXPECT_EQ(text::DecodeFile(text::EncodeFile(c.text)), c.text);
  }
}

TEST(CodePage, ValidUtf8IsToldFromOverlongCutAndSurrogateForms) {
  for (const char* good : {"", "a", "é", "中", "😀"}) EXPECT_TRUE(text::IsValidUtf8(good)) << good;
  for (const char* bad : {"\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xE4\xB8", "\xED\xA0\x80",
                          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "a\xFF"}) {
    EXPECT_FALSE(text::IsValidUtf8(bad)) << bad;
  }
}

TEST(CodePage, ConversionToGbkMarksWhatItDoesNotHold) {
  bool lossless = true;
  EXPECT_EQ(text::Encode(platform::Charset::kGbk, "中😀", &lossless), "\xD6\xD0?");
  EXPECT_FALSE(lossless);
  EXPECT_EQ(text::Encode(platform::Charset::kGbk, "中Ω", &lossless), "\xD6\xD0\xA6\xB8");
  EXPECT_TRUE(lossless);
  EXPECT_EQ(text::Encode(platform::Charset::kGbk, "Ä", &lossless), "?");
  EXPECT_FALSE(lossless);
  EXPECT_EQ(text::Encode(platform::Charset::kUtf8, "\xFF"), "\xFF");
}

}  // namespace
