#include "web/http/folder_list.h"

#include <algorithm>
#include <future>

#include "net/handler_scope.h"
#include "tests/support/server_fixture.h"
#include "text/code_page.h"
#include "web/http/first_entries.h"
#include "web/http/folder_page.h"
#include "web/http/url_encoding.h"

namespace ModWeb {
namespace {

using testing::HasSubstr;
using testing::Not;

// A page without its texts and the values of its attributes.
std::string Skeleton(std::string_view page) {
  page.remove_prefix(page.find("<body>"));
  std::string skeleton;
  bool isTag = false, isValue = false;
  for (const char c : page) {
    if (isTag && c == '"') isValue = !isValue;
    if (!isValue && (c == '<' || c == '>')) isTag = c == '<';
    if ((isTag && !isValue) || c == '>') skeleton += c;
  }
  return skeleton;
}

std::string PageWith(const std::string& name, bool isFolder) {
  FolderPage page({"/" + name + "/" + name + "/", {}, false, 0, 1});
  page.Add({name, name, isFolder, false, 1, {}});
  return page.Finish();
}

TEST(FolderPage, NoNameBreaksOutOfItsPlace) {
  std::vector<std::string> names = {"\"><img src=x onerror=y>",
                                    "' onmouseover='x",
                                    "<!--",
                                    "&quot;&#34;",
                                    "{{entries}}{{title}}",
                                    "\xE2\x80\xAExcod.exe",
                                    "\xC0\xA2\xE2\x80",
                                    std::string(255, '<')};
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '/') names.push_back(std::string("\xD6") + static_cast<char>(byte) + "\"x=");
  }
  for (const bool isFolder : {false, true}) {
    const std::string harmless = Skeleton(PageWith("x", isFolder));
    EXPECT_THAT(harmless, HasSubstr("<li><a href=\"><span"));
    for (const std::string& name : names) {
      const std::string page = PageWith(name, isFolder);
      EXPECT_TRUE(Skeleton(page) == harmless) << name;
      EXPECT_THAT(page, Not(HasSubstr("\xE2\x80\xAE"))) << name;
      EXPECT_TRUE(text::IsValidUtf8(page)) << name;
    }
  }
}

TEST(FolderPage, LinksAreThoseOfTheNamesBytes) {
  const struct {
    const char *name, *link;
  } cases[] = {
      {"javascript:x", "./javascript%3Ax\""},
      {"a b?c#d&e+f%2e", "./a%20b%3Fc%23d%26e%2Bf%252e\""},
      {"..\\x", "./..%5Cx\""},
      {"图.txt", "./%E5%9B%BE.txt\""},
      {"\xCA\xC0", "./%CA%C0\""},
  };
  for (const auto& one : cases) EXPECT_THAT(PageWith(one.name, false), HasSubstr(one.link));
  EXPECT_THAT(PageWith("\xCA\xC0", false), HasSubstr("<bdi>世</bdi>"));
  EXPECT_THAT(FolderPage({"//evil.example/x/"}).Finish(), Not(HasSubstr("\"//")));
}

class FolderList : public test::ProgramFixture {
 protected:
  static net::Task<> Answer(const files::ClientFiles& files, FolderListRequest request,
                            std::promise<std::optional<std::string>>& page) {
    net::Task<std::optional<std::string>> building = BuildFolderList(files, std::move(request));
    std::optional<std::string> built = co_await building;
    page.set_value(std::move(built));
  }

  std::optional<std::string> Build(FolderListRequest request) {
    std::promise<std::optional<std::string>> page;
    std::shared_ptr<net::HandlerScope> scope;
    OnLoop([&] {
      scope = std::make_shared<net::HandlerScope>(test::TheLoopHost().Loop(), nullptr);
      scope->Start(Answer(files_, std::move(request), page));
    });
    std::optional<std::string> built = page.get_future().get();
    OnLoop([&] { scope.reset(); });
    return built;
  }

  // What is listed, in order.
  std::string Names(const std::string& query) {
    const std::string page =
        Build({root_ + "\\", "/", query, false, {"CGI-bin"}}).value_or("<bdi>failed</bdi>");
    std::string names;
    const std::string mark = "name\"><bdi>";
    for (std::size_t at = page.find(mark); at != page.npos; at = page.find(mark, at + 1)) {
      const std::size_t begin = at + mark.size();
      names += page.substr(begin, page.find('<', begin) - begin) + " ";
    }
    return names;
  }

  std::string root_ = Home().Text("www");
  files::Confinement confinement_{true};
  files::ClientFiles files_{root_, confinement_};
};

TEST_F(FolderList, ShowsWhatIsNotHiddenInTheOrderAskedFor) {
  for (const char* folder : {"B", "a", ".git", "cgi-bin"}) {
    Home().Write("www/" + std::string(folder) + "/x", "");
  }
  const std::pair<const char*, int> files[] = {{"b.htm", 3}, {"C.htm", 1}, {"中.jpg", 2000}};
  auto time = std::filesystem::file_time_type::clock::now();
  for (const auto& [name, size] : files) {
    Home().Write("www/" + std::string(name), std::string(size, 'x'));
    std::filesystem::last_write_time(Home().Path("www/" + std::string(name)),
                                     time -= std::chrono::hours(1));
  }
  Home().Write("www/.htaccess", "");
  const struct {
    const char *query, *names;
  } cases[] = {
      {"", "a B b.htm C.htm 中.jpg "},
      {"sort=name&order=desc", "B a 中.jpg C.htm b.htm "},
      {"sort=size&order=asc", "a B C.htm b.htm 中.jpg "},
      {"order=desc&x&sort=size", "a B 中.jpg b.htm C.htm "},
  };
  for (const auto& one : cases) {
    const std::string names = Names(one.query);
    EXPECT_EQ(names, one.names) << one.query;
  }
  EXPECT_THAT(Names("sort=date&sort=\"><b>&order="), testing::EndsWith(" 中.jpg C.htm b.htm "));
  const std::string page = Build({root_ + "\\", "/", "", true, {}}).value();
  EXPECT_THAT(page, HasSubstr("<img src=\"./%E4%B8%AD.jpg\""));
  EXPECT_THAT(page, HasSubstr(">2.0 KB<"));
  EXPECT_THAT(page, HasSubstr("href=\"/style.css\""));
  EXPECT_THAT(page, Not(HasSubstr("\"../\"")));
  EXPECT_EQ(Build({root_ + "\\none\\", "/none/", "", false, {}}), std::nullopt);
  EXPECT_EQ(Build({root_ + "\\..\\", "/../", "", false, {}}), std::nullopt);
}

TEST_F(FolderList, OfALargeFolderShowsTheFirstNamesAndSaysSo) {
  Home().Write("www/100000", "");
  for (int i = 1; i < 5010; ++i) std::ofstream(Home().Path("www/" + std::to_string(100000 + i)));
  const std::string page = Build({root_ + "\\", "/", "", false, {}}).value();
  EXPECT_THAT(page, HasSubstr("只列出 5000 项"));
  EXPECT_THAT(page, HasSubstr(">104999<"));
  EXPECT_THAT(page, Not(HasSubstr(">105000<")));
}

TEST(FirstEntries, AreTheFirstWhereverTheyCome) {
  FirstEntries first(3);
  for (const char* name : {"G", "F", "C", "E", "A", "H", "B", "D"}) first.Add({name, name});
  first.Add({"Z", "Z", true});
  std::vector<ListedEntry> kept = first.Take();
  std::sort(kept.begin(), kept.end(), ComesFirst);
  std::string names;
  for (const ListedEntry& entry : kept) names += entry.name;
  EXPECT_EQ(names, "ZAB");
  EXPECT_TRUE(first.IsCut());
}

}  // namespace
}  // namespace ModWeb
