#include "text/code_page.h"

#include <gtest/gtest.h>

namespace {

using platform::Charset;

TEST(CodePage, GbkIsReadCharacterByCharacterWithAMarkForWhatIsNone) {
  using text::GbkCharacter;
  EXPECT_EQ(text::FromGbk("a\xC4\xE3-"), "a你-");
  EXPECT_EQ(text::FromGbk("\xC4"), "?");
  EXPECT_EQ(text::FromGbk("\xFF-"), "?-");
  EXPECT_EQ(GbkCharacter(0xC4, 0xE3), "你");
  EXPECT_FALSE(GbkCharacter(0x41, 0x42) || GbkCharacter(0x0D, 0x0A) || GbkCharacter(0x81, 0x20));
}

TEST(CodePage, AFileIsReadInWhateverSetItsBytesAreValidUtf8First) {
  const struct {
    std::string bytes;
    Charset charset;
    std::string text;
  } cases[] = {{"plain", platform::SystemCharset(), "plain"},
               {"中", Charset::kUtf8, "中"},
               {"\xEF\xBB\xBF中", Charset::kUtf8, "中"},
               {"\xD6\xD0", Charset::kGbk, "中"},
               {"\xC2\xBD", Charset::kUtf8, "½"}};  // valid in both sets
  for (const auto& each : cases) {
    EXPECT_EQ(text::CharsetOf(each.bytes), each.charset) << each.text;
    EXPECT_EQ(text::DecodeFile(each.bytes), each.text);
    EXPECT_EQ(text::DecodeFile(text::EncodeFile(each.text)), each.text);
  }
}

TEST(CodePage, LinesOfTwoSystemsInOneFileAreEachReadInTheirOwnSet) {
  EXPECT_EQ(text::DecodeLines("中文\r\n\xD6\xD0\xCE\xC4\r\n\n中"), "中文\r\n中文\r\n\n中");
  EXPECT_EQ(text::DecodeLines("\xC2\xBD\n\xD6\xD0"), "陆\n中");  // GBK as a whole
}

TEST(CodePage, BytesThatAreNoTextComeBackAsTheyWere) {
  for (int pair = 0; pair <= 0xFFFF; ++pair) {
    const std::string bytes = {static_cast<char>(pair >> 8), static_cast<char>(pair), '-'};
    for (const std::string& around : {bytes, "中" + bytes + "\xE4"}) {
      ASSERT_EQ(text::Encode(Charset::kGbk, text::Decode(Charset::kGbk, around)), around) << pair;
    }
  }
  EXPECT_EQ(text::Decode(Charset::kGbk, "\xFF*\xC4"), "\xFF*\xC4");
}

TEST(CodePage, FourBytesAreOneCharacterInGb18030AndComeBackFromGbkToo) {
  const std::string bytes = "\x95\x32\x82\x36.\x81\x30\x81\x30";
  EXPECT_EQ(text::Encode(Charset::kGbk, text::Decode(Charset::kGbk, bytes)), bytes);
  // Wine lacks this code page.
  if (!platform::NamedToUtf8("GB18030", "a")) return;
  EXPECT_EQ(text::Decode(Charset::kGb18030, bytes), "𠀀.\xC2\x80");
  EXPECT_EQ(text::Encode(Charset::kGb18030, "𠀀.\xC2\x80"), bytes);
}

TEST(CodePage, ValidUtf8IsToldFromOverlongCutAndSurrogateForms) {
  for (const char* good : {"", "a", "é", "中", "😀"}) EXPECT_TRUE(text::IsValidUtf8(good)) << good;
  for (const char* bad : {"\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xE4\xB8", "\xED\xA0\x80",
                          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "a\xFF"}) {
    EXPECT_FALSE(text::IsValidUtf8(bad)) << bad;
  }
}

TEST(CodePage, ConversionToGbkMarksWhatItDoesNotHold) {
  const std::pair<const char*, const char*> cases[] = {
      {"中Ω", "\xD6\xD0\xA6\xB8"}, {"中😀", "\xD6\xD0?"}, {"Ä", "?"}};
  for (const auto& [text, bytes] : cases) {
    bool lossless = false;
    EXPECT_EQ(text::Encode(Charset::kGbk, text, &lossless), bytes);
    EXPECT_EQ(lossless, text == cases[0].first);
  }
}

}  // namespace
