#include "web/url_decoding.h"

#include <gtest/gtest.h>

namespace {

using ModWeb::BadRequest;
using ModWeb::DecodeUrl;
using ModWeb::ExtractPostBody;

TEST(DecodeUrl, MakesCharactersOfEscapes) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"a+b", "a b"},
      {"x=a+b%21", "x=a b!"},
      {"%41%42", "?"},  // a pair, and no character
      {"%41x%42", "AxB"},
      {"%2F%41", "/A"},  // a listed mark is never the first of a pair
      {"%25%41", "%A"},
      {"%2541", "%41"},  // what was decoded is not decoded again
      {"%C4%E3", "你"},
      {"%c4%e3%ba%c3", "你好"},
      {"%C4%E3%21", "你!"},
      {"%0D%0A", "?"},
      {"%C4", "?"},
      {"%C4a", "?a"},
      {"%41%C4%E3", "??"},  // pairs are formed from the left
      {"%2B", "+"},
  };
  for (const auto& [encoded, decoded] : cases) EXPECT_EQ(DecodeUrl(encoded), decoded) << encoded;
  EXPECT_EQ(DecodeUrl("%00"), std::string(1, '\0'));
}

TEST(DecodeUrl, RefusesABadEscapeAnywhere) {
  for (const char* bad : {"%", "%4", "%zz", "a%4g", "%41%", "%41%4", "%-1", "%+1", "ok%21%x0"}) {
    EXPECT_THROW(DecodeUrl(bad), BadRequest) << bad;
  }
}

std::string Request(const std::string& length, const std::string& body) {
  return "POST /a.cgi HTTP/1.0\r\nContent-Length: " + length + "\r\n\r\n" + body;
}

TEST(PostBody, IsTheLastCharactersOfTheRequest) {
  EXPECT_EQ(ExtractPostBody(Request("8", "x=a+b%21")), "x=a b!");
  EXPECT_EQ(ExtractPostBody(Request("3", "abcdef")), "def");
  EXPECT_EQ(ExtractPostBody(Request("3", "a\r\n")), "a");
  EXPECT_EQ(ExtractPostBody(Request("2.5", "abc")), "bc");
  EXPECT_EQ(ExtractPostBody(Request("2", "x中文")), "中文");
  // More than there is: all of it, and decoded, blanks and all.
  EXPECT_EQ(ExtractPostBody("Content-Length: 999\r\na+b"), "Content-Length: 999\r\na b");
}

TEST(PostBody, IsTheWholeRequestUndecodedWithoutALength) {
  for (const std::string& request : {std::string("POST /a+b HTTP/1.0\r\n\r\n%41"),
                                     std::string("POST / HTTP\r\ncontent-length: 3\r\n\r\na+b"),
                                     Request("0", "a+b"), Request("-4", "a+b")}) {
    EXPECT_EQ(ExtractPostBody(request), request);
  }
}

TEST(PostBody, TakesTheFirstLengthWhereverItStands) {
  EXPECT_EQ(ExtractPostBody("POST /Content-Length: 1\r\nContent-Length: 5\r\n\r\nabcde"), "e");
}

TEST(PostBody, RefusesALengthThatIsNoSixteenBitNumber) {
  for (const char* bad : {"", "abc", "40000", "12 34"}) {
    EXPECT_THROW(ExtractPostBody(Request(bad, "body")), BadRequest) << bad;
  }
  EXPECT_THROW(ExtractPostBody("POST / HTTP Content-Length: 5"), BadRequest);
}

}  // namespace
