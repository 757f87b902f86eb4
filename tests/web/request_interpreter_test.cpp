// The requests without a socket: what is asked and what is decided.

#include "web/request_interpreter.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace ModWeb {
namespace {

class FakeSite final : public RequestInterpreter::Site {
 public:
  std::set<std::string> files;

 private:
  bool HasFile(const std::string& name) const override { return files.contains(name); }
};

class RequestInterpreterTest : public testing::Test {
 protected:
  RequestInterpreterTest() {
    options_.WebRights[0] = options_.AppOptions[1] = "True";
    options_.FirstDefaultPage = options_.DefaultPages[0] = "first.htm";
  }

  // The decision as one text.
  std::string Decide(const std::string& request) {
    const char* const names[] = {"nothing ", "file ",       "page ",
                                 "run ",     "refuse GET ", "refuse POST "};
    const Decision decision = interpreter_.Interpret(request);
    shown_ = decision.shown;
    return names[static_cast<int>(decision.action)] + decision.resource + decision.fault +
           (decision.body.empty() ? "" : ": " + decision.body);
  }

  struct Case {
    std::string request, decided;
  };
  void Check(const std::vector<Case>& cases) {
    for (const auto& [request, decided] : cases) EXPECT_EQ(Decide(request), decided) << request;
  }

  FakeSite site_;
  WebOptions options_;
  WebSession session_;
  RequestInterpreter interpreter_{site_, options_, session_};
  std::string shown_;
};

TEST_F(RequestInterpreterTest, CutsTheResourceByPositionsAndKeepsTheLastOneIfThereIsNone) {
  Check({{"GET /a.txt HTTP/1.0", "file a.txt"},
         {"GETX GET /docs/a.HTM HTTP", "page docs\\a.HTM"},
         {"GET  HTTP/1.0", "page ocs\\a.HTM"},
         {"GET /no-blank-behind", "page cs\\a.HTM"},
         {"GET/a.txt HTTP", "file a.txt"},
         {"GET /a.html?x HTTP", "file a.html?x"},
         {"GET 你/../html HTTP", "file \\..\\html"},
         {"GET /.html ", "page .html"},
         {"POST", "refuse POST "},
         {"POST /a.exe?x.txt HTTP\r\n\r\n?", "run a.exe: POST /a.exe?x.txt HTTP\r\n\r\n?"},
         {"POST/ HTTP/1.0", "refuse POST "},
         {"POST /a.exe HTTP\r\n\r\n?", "refuse POST "}});
  EXPECT_EQ(session_.CurrentResource, "a.exe HTTP\r\n\r\n");
  EXPECT_EQ(shown_, "POST /a.exe HTTP\r\n\r\n") << "as cut";
  Check({{"get / HTTP", "nothing "},
         {"HEAD / HTTP", "nothing "},
         {"PO?ST", "nothing "},
         {"", "nothing "}});
  EXPECT_EQ(session_.CurrentMethod, "POST");
  EXPECT_EQ(shown_, "");
}

TEST_F(RequestInterpreterTest, RunsProgramsWithTheDecodedBody) {
  const std::string length = "POST /sub/Form.Cgi HTTP/1.0\r\nContent-Length: ";
  Check({{length + "8\r\n\r\nx=a+b%21", "run sub/Form.Cgi: x=a b!"},
         {length + "2\r\n\r\n%z", "nothing invalid URL escape at character 1"},
         {length + "x\r\n\r\n", "nothing invalid Content-Length: x"},
         {"POST /form.txt HTTP", "refuse POST "},
         {"POST / HTTP", "refuse POST "}});
  options_.FirstDefaultPage = "first.exe";
  Check({{"POST / HTTP", "run first.exe: POST / HTTP"}});
  options_.AppOptions[1] = "False";
  Check({{"POST / HTTP", "refuse POST "}});
  EXPECT_EQ(session_.CurrentResource, "first.exe");
}

TEST_F(RequestInterpreterTest, TakesTheFirstOfTenDefaultPagesThatExists) {
  for (int i = 0; i < 11; ++i) options_.DefaultPages[i] = "p" + std::to_string(i) + ".htm";
  site_.files = {"p10.htm"};
  Check({{"GET / HTTP", "page p9.htm"}});
  site_.files = {"p10.htm", "p8.htm", "p3.htm"};
  Check({{"GET / HTTP", "page p3.htm"}});
  options_.StartDefaultPage = false;
  Check({{"GET / HTTP", "page first.htm"}});
  options_.WebRights[0] = "0";
  Check({{"GET /docs/a.htm HTTP", "refuse GET "}});
  EXPECT_EQ(session_.CurrentResource, "docs/a.htm") << "its slashes stay";
}

}  // namespace
}  // namespace ModWeb
