#include <gtest/gtest.h>

#include <string>

#include "mail/base64.h"
#include "mail/encoded_subject.h"
#include "mail/quoted_printable.h"

namespace {

using ModMail::DecodeBase64;
using ModMail::DecodeEncodedSubject;

struct Case {
  std::string encoded, decoded;
};

template <class Decoder>
std::string InPieces(std::string_view text, std::size_t size) {
  Decoder decoder;
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); i += size) decoded += decoder.Next(text.substr(i, size));
  return decoded + decoder.End();
}

template <class Decoder, std::size_t kCount>
void ExpectWholeAndInPieces(const Case (&cases)[kCount]) {
  for (const Case& one : cases) {
    for (const std::size_t size : {1U, 2U, 3U, 4U, 7U, 1000000U}) {
      EXPECT_EQ(InPieces<Decoder>(one.encoded, size), one.decoded) << one.encoded << " by " << size;
    }
  }
}

TEST(Base64, DecodesGroupsAndTheirPadding) {
  const Case cases[] = {{"", ""},
                        {"Zm9vYmFy", "foobar"},
                        {"Zm9vYmE=", "fooba"},
                        {"Zm9vYg==", "foob"},
                        {"AP/+", std::string("\0\xFF\xFE", 3)},
                        {"Zg==Zm8=Zm9v", "ffofoo"},  // pieces padded separately
                        {"Zm 9v-Ym.Fy", "foobar"},   // characters outside the alphabet are skipped
                        {"Zm9vYmE", "fooba"},        // an incomplete group yields its whole bytes
                        {"Zm9vYg", "foob"},
                        {"Zm9vY", "foo"},
                        {"====", ""},
                        {"=", ""}};
  ExpectWholeAndInPieces<ModMail::Base64Decoder>(cases);
}

TEST(Base64, DecodesLinesOfAnyLength) {
  for (std::size_t lineLength = 1; lineLength < 90; ++lineLength) {
    Case one;
    for (int i = 0; i < 50; ++i) one = {one.encoded + "VGFybndlcmsg", one.decoded + "Tarnwerk "};
    for (std::size_t i = 0; i < one.encoded.size(); i += lineLength + 2)
      one.encoded.insert(i, "\r\n");
    ASSERT_EQ(DecodeBase64(one.encoded), one.decoded) << lineLength;
  }
}

// The texts are in UTF-8, the system code page of the tests.
TEST(QuotedPrintable, DecodesPairsOfEscapes) {
  const Case cases[] = {
      {"plain", "plain"},
      {"1=3D1", "1=1"},
      {"one=\ntwo", "onetwo"},
      {"one=\r\ntwo", "onetwo"},  // CR LF is no pair of digits, and all three are lost
      {"one=\rtwo", "onewo"},
      {"=C4=E3=BA=C3", "你好"},
      {"=c4=e3", ""},  // lower case is lost
      {"a=4ab", "ab"},
      {"a=G1b", "ab"},
      {"=7F", ""},                  // held
      {"=7F=C4", "?"},              // no character
      {"=C4=41=E3=E3", "A\u6CA3"},  // a value below 127 drops the held byte
      {"=C4x=E3", "x你"},           // a plain byte does not
      {"=", ""},
      {"end=4", "end"},
      {"\xC4\xE3", "\xC4\xE3"}};  // bytes without escapes are copied
  ExpectWholeAndInPieces<modQPDedode::QuotedPrintableDecoder>(cases);
}

TEST(EncodedSubject, DecodesWordsOfGb2312) {
  constexpr std::size_t kMany = 1000000;
  std::string words;
  for (std::size_t i = 0; i < kMany; ++i) words += "=?gb2312?B?YQ== ";
  const Case cases[] = {
      {"=?GB2312?b?xOO6ww==?=", "你好"},
      {"=?gb2312?B?xOO6ww==", "你好"},
      {"=?gb2312?B?xOO6ww==?= and more", "你好 and more"},
      {"=?gb2312?B?xOM=?=\r\n =?gb2312?B?usM=?=", "你好"},
      {"=?gb2312?B?xOO6?= =?gb2312?B?ww==?= !", "你好 !"},  // a divided character
      {"=?gb2312?B?/w==?=", "?"},
      {"=?gb2312?B?", ""},
      {"=?utf-8?B?5L2g?=", "=?utf-8?B?5L2g?="},
      {"Hello =?gb2312?B?xOO6ww==?=", "Hello =?gb2312?B?xOO6ww==?="},
      {"", ""},
      {words, std::string(kMany, 'a') + " "}};  // quadratic time would exceed the time limit
  for (const Case& one : cases) {
    EXPECT_TRUE(DecodeEncodedSubject(one.encoded) == one.decoded) << one.encoded.substr(0, 99);
  }
}

}  // namespace
