#include "web/http/media_type.h"

#include <gtest/gtest.h>

namespace ModWeb {
namespace {

TEST(MediaType, IsThatOfTheLastEndingInAnyCaseAndNeverBreaksAHeader) {
  const struct {
    const char *name, *type;
  } cases[] = {
      {"a.PNG", "image/png"},
      {"C:\\www\\b.tar.gz", "application/gzip"},
      {"x.js\\photo.jpeg", "image/jpeg"},
      {"clip.mp4", "video/mp4"},
      {"a.no-such", "application/octet-stream"},
      {"a.\r\nX: y", "application/octet-stream"},
      {"a...\\..\\b.\xFF", "application/octet-stream"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(TypeByName(one.name), one.type) << one.name;
    EXPECT_FALSE(DependsOnBytes(TypeByName(one.name))) << one.name;
  }
}

TEST(MediaType, NamesTheSetOfATextThatDoesNotNameItItself) {
  const std::string utf8 = "世界";
  const std::string gbk = "\xCA\xC0\xBD\xE7";
  const std::string meta = "<META HTTP-EQUIV=x content='text/html; charset = gb2312'>";
  const std::string html = "text/html";
  const struct {
    std::string name, beginning;
    bool isWhole;
    std::string type;
  } cases[] = {
      {"a.htm", utf8, true, html + "; charset=utf-8"},
      {"a.htm", "<p>", true, html},
      {"a.htm", gbk, true, html + "; charset=gbk"},
      {"a.htm", meta + utf8, true, html},
      {"a.htm", "<!-- <b>" + meta + " -->" + gbk, true, html + "; charset=gbk"},
      {"a.htm", std::string(1024, ' ') + meta + gbk, true, html + "; charset=gbk"},
      {"a.html", "\xEF\xBB\xBF" + utf8, true, html},
      {"a.html", "\xFF\xFEh", true, html},
      {"a.js", "alert(1)", true, "text/javascript; charset=utf-8"},
      {"a.js", "alert(1)", false, "text/javascript"},
      {"a.js", "// " + utf8, false, "text/javascript; charset=utf-8"},
      {"a.js", utf8 + utf8.substr(0, 2), false, "text/javascript; charset=utf-8"},
      {"a.js", utf8 + utf8.substr(0, 1), true, "text/javascript"},
      {"a.js", "abc" + gbk.substr(0, 1), false, "text/javascript"},
      {"a.txt", gbk + gbk + gbk[0], false, "text/plain; charset=gbk"},
      {"a.txt", "caf\xE9 \xFF", true, "text/plain"},
      {"a.css", "@charset \"gbk\"; /*" + gbk, true, "text/css"},
      {"a.xml", "<?xml version='1.0' encoding='gbk'?>" + gbk, true, "application/xml"},
      {"a.svg", "<svg>" + gbk, true, "image/svg+xml; charset=gbk"},
      {"README", utf8, true, "text/plain; charset=utf-8"},
      {".profile", "a=1\n", true, "text/plain; charset=utf-8"},
      {"core",
       std::string("\x7F"
                   "ELF\0",
                   5),
       false, "application/octet-stream"},
  };
  for (const auto& one : cases) {
    const std::string named = TypeByName(one.name);
    EXPECT_TRUE(DependsOnBytes(named)) << one.name;
    EXPECT_EQ(MediaTypeOf(named, one.beginning, one.isWhole), one.type) << one.beginning;
  }
}

}  // namespace
}  // namespace ModWeb
