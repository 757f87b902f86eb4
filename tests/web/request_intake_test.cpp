#include "web/request_intake.h"

#include <gtest/gtest.h>

namespace {

using ModWeb::CutGetResource;
using ModWeb::CutPostResource;
using ModWeb::MethodOf;
using ModWeb::RequestMethod;

TEST(RequestMethod, IsToldByItsFirstLettersInCapitals) {
  EXPECT_EQ(MethodOf("GET / HTTP/1.0"), RequestMethod::kGet);
  EXPECT_EQ(MethodOf("GETAWAY"), RequestMethod::kGet);
  EXPECT_EQ(MethodOf("POSTER"), RequestMethod::kPost);
  for (const char* other : {"", "get / HTTP/1.0", "HEAD / HTTP/1.0", "PUT", " GET /", "POS"}) {
    EXPECT_EQ(MethodOf(other), RequestMethod::kOther) << other;
  }
}

struct Cut {
  const char* request;
  const char* resource;  // null: the previous one stays
};

TEST(GetResource, IsCutByPositions) {
  for (const Cut& cut : {
           Cut{"GET / HTTP/1.0\r\n", "/"},
           Cut{"GET /a b HTTP/1.0", "/a"},
           Cut{"GET /x.htm?y=1 HTTP/1.0", "/x.htm?y=1"},
           Cut{"GET  HTTP/1.0", nullptr},
           Cut{"GET /no-blank-behind", nullptr},
           Cut{"GET", nullptr},
           Cut{"GET ", nullptr},
           // Without "GET " its position is 0, and the cut begins at the fourth character.
           Cut{"GET/a.txt HTTP", "/a.txt"},
           Cut{"GETX GET /b HTTP", "/b"},
           Cut{"GETX /c GET", "X"},
       }) {
    EXPECT_EQ(CutGetResource(cut.request).value_or("<none>"),
              cut.resource ? cut.resource : "<none>")
        << cut.request;
  }
}

TEST(PostResource, EndsAtAQuestionMarkAnywhereElseAtABlank) {
  for (const Cut& cut : {
           Cut{"POST /t.exe?z HTTP/1.0", "/t.exe"},
           Cut{"POST /t.exe HTTP/1.0\r\n\r\na?b", "/t.exe HTTP/1.0\r\n\r\na"},
           Cut{"POST /t.exe HTTP/1.0\r\n\r\nab", "/t.exe"},
           Cut{"POST  HTTP/1.0", nullptr},
           Cut{"POST ?", nullptr},
           Cut{"POST/a.cgi HTTP", "/a.cgi"},
           Cut{"PO?ST", nullptr},
           Cut{"POST", nullptr},
       }) {
    EXPECT_EQ(CutPostResource(cut.request).value_or("<none>"),
              cut.resource ? cut.resource : "<none>")
        << cut.request;
  }
}

}  // namespace
