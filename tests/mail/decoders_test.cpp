#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mail/base64.h"
#include "mail/encoded_subject.h"
#include "mail/quoted_printable.h"
#include "mail/shown_subject.h"

namespace {

using Cases = std::vector<std::pair<std::string, std::string>>;

// Whole and in pieces of any size.
template <class Decoder>
void ExpectDecoded(const Cases& cases) {
  for (const auto& [encoded, expected] : cases) {
    for (const std::size_t size : {1, 2, 3, 4, 7, 1000}) {
      Decoder decoder;
      std::string decoded;
      for (std::size_t i = 0; i < encoded.size(); i += size) {
        decoded += decoder.Next(std::string_view(encoded).substr(i, size));
      }
      EXPECT_EQ(decoded + decoder.End(), expected) << encoded << " by " << size;
    }
  }
}

TEST(ShownSubject, IsThatOfTheHeaderAsMailProgramsWriteIt) {
  const Cases cases = {
      {"subject:\t=?GBK?b?xOO6?= =?gbk?B?ww==?= !\r\n\r\nSubject: x", "你好 !"},
      {"Subject: a\n  b =?utf-8?q?=E4=BD=A0_=?= c", "a  b 你 = c"},
      {"Subject: =?koi8-r?B?xOM=?= =?utf-8?B?", "дЦ =?utf-8?B?"},
      {"Subject: =?Shift_JIS*ja?B?k/qWew==?= =?none?Q?=C4=E3?=", "日本你"},
      {"From: a\r\n\r\nSubject: text", ""},
  };
  for (const auto& [message, shown] : cases) EXPECT_EQ(ModMail::ShownSubject(message), shown);
}

// Groups are padded separately; the last one may be incomplete. What is not in the alphabet is
// skipped.
TEST(Base64, DecodesGroupsAndTheirPadding) {
  ExpectDecoded<ModMail::Base64Decoder>({
      {"//79", "\xFF\xFE\xFD"},
      {"Zg==Zm8=Zm9v", "ffofoo"},
      {"Zm9vYmFyZ\r\nm 9v-Ym.\r\nFyZm9v", "foobarfoobarfoo"},
      {"Zm9vY", "foo"},
      {"====", ""},
  });
}

// The texts are in UTF-8, the system code page of the tests.
TEST(QuotedPrintable, DecodesPairsOfEscapes) {
  ExpectDecoded<modQPDedode::QuotedPrintableDecoder>({
      {"one=\ntwo", "onetwo"},
      {"one=\r\ntwo", "onetwo"},  // CR LF is no pair of digits, and all three are lost
      {"one=\rtwo=4", "onewo"},
      {"=C4=E3=BA=C3", "你好"},
      {"=c4=e3", ""},  // lower case is lost
      {"a=4ab", "ab"},
      {"a=G1b", "ab"},
      {"=7F", ""},                  // held
      {"=7F=C4", "?"},              // no character
      {"=C4=41=E3=E3", "A\u6CA3"},  // a value below 127 drops the held byte
      {"=C4x=E3", "x你"},           // a plain byte does not
      {"\xC4\xE3", "\xC4\xE3"},     // bytes without escapes are copied
  });
}

TEST(EncodedSubject, DecodesWordsOfGb2312) {
  constexpr std::size_t kMany = 1000000;
  std::string words;
  for (std::size_t i = 0; i < kMany; ++i) words += "=?gb2312?B?YQ== ";
  const Cases cases = {
      {"=?GB2312?b?xOO6ww==?=", "你好"},
      {"=?gb2312?B?xOO6ww==", "你好"},
      {"=?gb2312?B?xOM=?=\r\n =?gb2312?B?usM=?=", "你好"},
      {"=?gb2312?B?xOO6?= =?gb2312?B?ww==?= !", "你好 !"},  // a divided character
      {"=?utf-8?B?5L2g?=", "=?utf-8?B?5L2g?="},
      {"Hello =?gb2312?B?xOO6ww==?=", "Hello =?gb2312?B?xOO6ww==?="},
      {words, std::string(kMany, 'a') + " "},  // quadratic time would exceed the time limit
  };
  for (const auto& [encoded, decoded] : cases) {
    EXPECT_TRUE(ModMail::DecodeEncodedSubject(encoded) == decoded) << encoded.substr(0, 99);
  }
}

}  // namespace
