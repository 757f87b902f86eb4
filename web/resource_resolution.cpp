// Which file a GET request gets.

#include <algorithm>

#include "files/files.h"
#include "platform/text_case.h"
#include "text/path_text.h"
#include "text/strings.h"
#include "web/web_server.h"

namespace ModWeb {
namespace {

bool IsHtmlPage(const std::string& resource) {
  constexpr std::size_t kLongest = 5;
  const std::size_t length = std::min(resource.size(), kLongest);
  const std::string upper = platform::UpperCase(resource.substr(resource.size() - length));
  return upper == ".HTML" || upper.ends_with(".HTM");
}

}  // namespace

using net::Task;

Task<> WebServer::ServeGetRequest(Client client) {
  if (CurrentResource_ != "/") {
    CurrentResource_ = WithoutFirstCharacter(CurrentResource_);
  } else if (options_.StartDefaultPage) {
    CurrentResource_ = FindDefaultPage();
  } else {
    CurrentResource_ = options_.FirstDefaultPage;
  }
  if (!options_.MayRead()) {
    Task<> refusing = RefuseGet(client);
    co_await refusing;
    co_return;
  }
  CurrentResource_ = text::ReplaceAll(CurrentResource_, "/", "\\");

  // From here on this request's own: the next one overwrites the shared text while we wait.
  const std::string resource = CurrentResource_;
  const std::string path = PathInRoot(resource);
  if (!IsHtmlPage(resource)) {
    Task<> sending = SendWebFile(path, client);
    co_await sending;
    co_return;
  }
  Task<> sending = SendHtmlFile(path, client);
  co_await sending;
  CopyIntoSearch(path, resource);
}

Task<> WebServer::RefuseGet(Client client) {
  SendNotFoundPage(client);
  LogAccess(client, "Failed!");
  co_await net::YieldToEvents();
  client->Close();
}

// The eleventh entry is never tried. If none exists, the tenth stands, which usually is empty.
std::string WebServer::FindDefaultPage() const {
  const std::size_t last = options_.DefaultPages.size() - 2;
  for (std::size_t i = 0; i < last; ++i) {
    const std::string& name = options_.DefaultPages[i];
    if (ModCommon::FileExists(PathInRoot(name))) return name;
  }
  return options_.DefaultPages[last];
}

// While a search index is there, every page that was served is collected beside it.
void WebServer::CopyIntoSearch(const std::string& path, const std::string& resource) {
  if (!ModCommon::FileExists(PathInRoot("Search\\Search.ifo"))) return;
  const std::string name = "Search\\" + resource;
  searchCopies_.Add(path, PathInRoot(name), name);
}

std::string WebServer::PathInRoot(std::string_view name) const {
  return ModCommon::AddSlash(options_.WebRootDir) + std::string(name);
}

}  // namespace ModWeb
