#include "settings/ini_file.h"

#include <gtest/gtest.h>

#include "settings/ini_text.h"
#include "tests/support/temporary_folder.h"

namespace {

using ModINIOP::ReadIni;
using ModINIOP::WriteIni;

class IniFile : public testing::Test {
 protected:
  std::string Path() const { return folder_.Text("Server.ini"); }
  void Content(std::string_view content) const { folder_.Write("Server.ini", content); }
  std::string Content() const { return folder_.Read("Server.ini"); }
  std::string Read(std::string_view section, std::string_view key) const {
    return ReadIni(Path(), section, key);
  }

  test::TemporaryFolder folder_;
};

TEST_F(IniFile, MissingFileSectionKeyAndEmptyValueAllReadEmpty) {
  EXPECT_EQ(Read("A", "k"), "");
  Content("[A]\r\nempty=\r\n");
  EXPECT_EQ(Read("B", "empty"), "");
  EXPECT_EQ(Read("A", "other"), "");
  EXPECT_EQ(Read("A", "empty"), "");
}

TEST_F(IniFile, SectionsAndKeysAreFoundWithoutRegardToCaseAndTheFirstCounts) {
  Content(
      "[a]\nK = first\nk=second\n[A]\nk=third\nlate=no\n; k=comment\n[用户信息]\nPassword=秘\n");
  EXPECT_EQ(Read("A", "K"), " first");
  EXPECT_EQ(Read("A", "late"), "");
  EXPECT_EQ(Read("用户信息", "password"), "秘");
}

TEST_F(IniFile, AValueKeepsLeadingBlanksAndQuotesAndLosesTrailingBlanks) {
  Content("[A]\r\nk=  \"v\"   \r\n");
  EXPECT_EQ(Read("A", "k"), "  \"v\"");
}

TEST_F(IniFile, AValueIsCutAtTheBufferWithoutHalfACharacterAndThenTrimmed) {
  Content("[A]\nlong=" + std::string(300, 'x') + "\nwide=" + std::string(253, 'x') +
          "中\nblank=" + std::string(250, 'x') + "     y\nnul=ab" + std::string(1, '\0') + "c\n");
  EXPECT_EQ(Read("A", "long"), std::string(254, 'x'));
  EXPECT_EQ(Read("A", "wide"), std::string(253, 'x'));
  EXPECT_EQ(Read("A", "blank"), std::string(250, 'x'));
  EXPECT_EQ(Read("A", "nul"), "ab");
}

TEST_F(IniFile, WritingChangesOneValueAndNothingElse) {
  Content("; mine\r\n[A]\r\nk=1\r\nodd line\r\n\r\n[B]\r\nz=2");
  EXPECT_NE(WriteIni(Path(), "a", "K", "new"), 0);
  EXPECT_NE(WriteIni(Path(), "A", "added", "x"), 0);
  EXPECT_NE(WriteIni(Path(), "C", "c", "y"), 0);
  EXPECT_EQ(Content(),
            "; mine\r\n[A]\r\nk=new\r\nodd line\r\nadded=x\r\n\r\n[B]\r\nz=2\r\n[C]\r\nc=y\r\n");
}

TEST_F(IniFile, AFileThatWasCutBetweenCarriageReturnAndLineFeedTakesAValue) {
  Content("[A]\r");
  WriteIni(Path(), "A", "k", "v");
  EXPECT_EQ(Content(), "[A]\r\nk=v\r\n");
  EXPECT_EQ(Read("A", "k"), "v");
}

TEST_F(IniFile, AFileFromAChineseWindowsIsReadAndStaysInItsCodePage) {
  Content("[S]\nname=\xD6\xD0\xCE\xC4\n");  // GBK
  EXPECT_EQ(Read("S", "name"), "中文");
  WriteIni(Path(), "S", "name", "文中");
  EXPECT_EQ(Content(), "[S]\nname=\xCE\xC4\xD6\xD0\n");
}

// What GBK does not hold, and what in GBK would be taken for UTF-8.
TEST_F(IniFile, AFileInGbkBecomesUtf8AsAWholeWhereItCouldNotHoldAValue) {
  for (const char* value : {"中😀", "Ä"}) {
    Content("; \xD7\xA2\n[S]\nname=\xD6\xD0\xCE\xC4\nother=\xC2\xBD\n");
    WriteIni(Path(), "S", "added", value);
    EXPECT_EQ(Content(), "; 注\n[S]\nname=中文\nother=陆\nadded=" + std::string(value) + "\n");
  }
  Content("[S]\nname=\xD6\xD0\nother=\xC2\xBD\n");
  WriteIni(Path(), "S", "name", "plain");
  EXPECT_EQ(Content(), "[S]\nname=plain\nother=陆\n");
}

TEST_F(IniFile, AByteOrderMarkAndALineBreakInAValueDoNoHarm) {
  Content("\xEF\xBB\xBF[A]\nk=v\n");
  EXPECT_EQ(Read("A", "k"), "v");
  WriteIni(Path(), "A", "k", "x\r\n[B]");
  EXPECT_EQ(Read("A", "k"), "x  [B]");
  EXPECT_EQ(Read("B", "k"), "");
}

TEST_F(IniFile, WhatIsTooLargeIsNeitherReadNorReplaced) {
  const std::string large = "[A]\nk=v\n" + std::string(5'000'000, 'x');
  Content(large);
  EXPECT_EQ(Read("A", "k"), "");
  EXPECT_EQ(WriteIni(Path(), "A", "k", "new"), 0);
  EXPECT_EQ(Content().size(), large.size());
}

TEST_F(IniFile, AFailedWriteReportsFailureAndKeepsTheFile) {
  EXPECT_EQ(WriteIni(folder_.Text("missing\\Server.ini"), "A", "k", "v"), 0);
  folder_.Write("Server.ini/inside", "");  // a folder of that name
  EXPECT_EQ(WriteIni(Path(), "A", "k", "v"), 0);
  EXPECT_TRUE(folder_.Has("Server.ini/inside"));
}

}  // namespace
