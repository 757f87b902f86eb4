#include <gtest/gtest.h>

#include <string>

#include "mail/base64.h"
#include "mail/encoded_subject.h"
#include "mail/quoted_printable.h"

namespace {

using ModMail::Base64Decoder;
using ModMail::DecodeBase64;
using ModMail::DecodeEncodedSubject;
using modQPDedode::DecodeQuotedPrintable;
using modQPDedode::QuotedPrintableDecoder;

template <class Decoder>
std::string InPieces(std::string_view text, std::size_t size) {
  Decoder decoder;
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); i += size) decoded += decoder.Next(text.substr(i, size));
  return decoded + decoder.End();
}

struct Case {
  std::string encoded;
  std::string decoded;
};

TEST(Base64, DecodesGroupsAndTheirPadding) {
  const Case cases[] = {
      {"", ""},
      {"Zm9vYmFy", "foobar"},
      {"Zm9vYmE=", "fooba"},
      {"Zm9vYg==", "foob"},
      {"Zm9v\r\nYmFy\nZm9v", "foobarfoo"},
      {"AP/+", std::string("\0\xFF\xFE", 3)},
      {"Zg==Zm8=Zm9v", "ffofoo"},  // pieces padded separately
      {"Zm 9v-Ym.Fy", "foobar"},   // characters outside the alphabet are skipped
      {"Zm9vYmE", "fooba"},        // an incomplete group yields its whole bytes
      {"Zm9vYg", "foob"},
      {"Zm9vY", "foo"},
      {"====", ""},
      {"=", ""},
  };
  for (const Case& one : cases) EXPECT_EQ(DecodeBase64(one.encoded), one.decoded) << one.encoded;
}

TEST(Base64, DecodesLinesOfAnyLengthAndPiecesOfAnySizeAlike) {
  const std::string group = "VGFybndlcmsg";  // "Tarnwerk "
  for (std::size_t lineLength = 1; lineLength < 90; ++lineLength) {
    std::string encoded;
    for (std::size_t i = 0; i < 600; ++i) {
      if (i % lineLength == 0) encoded += "\r\n";
      encoded += group[i % group.size()];
    }
    std::string expected;
    for (std::size_t i = 0; i < 600 / group.size(); ++i) expected += "Tarnwerk ";
    ASSERT_EQ(DecodeBase64(encoded), expected) << lineLength;
    ASSERT_EQ(InPieces<Base64Decoder>(encoded, lineLength), expected) << lineLength;
  }
}

// The texts are in UTF-8, the system code page of the tests.
TEST(QuotedPrintable, DecodesPairsOfEscapesWholeAndInPieces) {
  const Case cases[] = {
      {"plain", "plain"},
      {"=41", "A"},
      {"1=3D1", "1=1"},
      {"one=\ntwo", "onetwo"},
      {"one=\r\ntwo", "onetwo"},  // CR LF is no pair of digits, and all three are lost
      {"one=\rtwo", "onewo"},
      {"=C4=E3=BA=C3", "你好"},
      {"=c4=e3", ""},  // lower case is lost
      {"a=4ab", "ab"},
      {"a=G1b", "ab"},
      {"=7F", ""},      // held
      {"=7F=C4", "?"},  // no character
      {"=C4=41=E3=E3",
       "A"
       "沣"},              // a value below 127 drops the held byte
      {"=C4x=E3", "x你"},  // a plain byte does not
      {"=C4=7E", "~"},
      {"=", ""},
      {"=4", ""},
      {"end=", "end"},
      {"\xC4\xE3", "\xC4\xE3"},  // bytes without escapes are copied
  };
  for (const Case& one : cases) {
    EXPECT_EQ(DecodeQuotedPrintable(one.encoded), one.decoded) << one.encoded;
    for (std::size_t size = 1; size < 5; ++size) {
      EXPECT_EQ(InPieces<QuotedPrintableDecoder>(one.encoded, size), one.decoded) << one.encoded;
    }
  }
}

TEST(EncodedSubject, DecodesWordsOfGb2312) {
  const Case cases[] = {
      {"=?gb2312?B?xOO6ww==?=", "你好"},
      {"=?GB2312?b?xOO6ww==?=", "你好"},
      {"=?gb2312?B?xOO6ww==", "你好"},
      {"=?gb2312?B?xOO6ww==?= and more", "你好 and more"},
      {"=?gb2312?B?xOM=?=\r\n =?gb2312?B?usM=?=", "你好"},
      {"=?gb2312?B?xOO6?= =?gb2312?B?ww==?= !", "你好 !"},  // a divided character
      {"=?gb2312?B?/w==?=", "?"},
      {"=?gb2312?B?"
       "?=",
       ""},
      {"=?gb2312?B?", ""},
      {"=?utf-8?B?5L2g?=", "=?utf-8?B?5L2g?="},
      {"Hello =?gb2312?B?xOO6ww==?=", "Hello =?gb2312?B?xOO6ww==?="},
      {"", ""},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(DecodeEncodedSubject(one.encoded), one.decoded) << one.encoded;
  }
}

// Quadratic time would exceed the time limit of the test.
TEST(EncodedSubject, DecodesManyWordsWithoutAnEndInLinearTime) {
  constexpr std::size_t kMany = 1000000;
  std::string words;
  for (std::size_t i = 0; i < kMany; ++i) words += "=?gb2312?B?YQ== ";
  EXPECT_TRUE(DecodeEncodedSubject(words) == std::string(kMany, 'a') + " ");
}

}  // namespace
