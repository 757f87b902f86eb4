// Which file a GET request gets.

#include "core/files.h"
#include "core/paths.h"
#include "platform/system_message.h"
#include "platform/text_case.h"
#include "web/web_server.h"

namespace ModWeb {
namespace {

bool IsHtmlPage(const std::string& resource) {
  const std::string upper = platform::UpperCase(resource);
  return upper.ends_with(".HTML") || upper.ends_with(".HTM");
}

}  // namespace

using core::Task;

Task<> WebServer::ServeGetRequest(Client client) {
  if (CurrentResource_ != "/") {
    CurrentResource_ = WithoutFirstCharacter(CurrentResource_);
  } else if (options_.StartDefaultPage) {
    CurrentResource_ = FindDefaultPage();
  } else {
    CurrentResource_ = options_.FirstDefaultPage;
  }
  if (!options_.MayRead()) {
    co_await RefuseGet(client);
    co_return;
  }
  CurrentResource_ = core::ReplaceAll(CurrentResource_, "/", "\\");

  // From here on this request's own: the next one overwrites the shared text while we wait.
  const std::string resource = CurrentResource_;
  const std::string path = PathInRoot(resource);
  if (!IsHtmlPage(resource)) {
    co_await SendWebFile(path, client);
    co_return;
  }
  co_await SendHtmlFile(path, client);
  CopyIntoSearch(path, resource);
}

Task<> WebServer::RefuseGet(Client client) {
  SendNotFoundPage(client);
  LogAccess(client, "Failed!");
  co_await core::YieldToEvents();
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
void WebServer::CopyIntoSearch(const std::string& path, const std::string& resource) const {
  if (!ModCommon::FileExists(PathInRoot("Search\\Search.ifo"))) return;
  const std::error_code error = core::CopyFileOver(path, PathInRoot("Search\\" + resource));
  if (error)
    environment_.program.errors.LogError("Search\\" + resource + ": " +
                                         platform::SystemMessage(error));
}

std::string WebServer::PathInRoot(std::string_view name) const {
  return ModCommon::AddSlash(options_.WebRootDir) + std::string(name);
}

}  // namespace ModWeb
