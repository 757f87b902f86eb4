#include "web/web_server.h"

#include "core/hosts_file.h"
#include "core/service_environment.h"
#include "platform/system_message.h"
#include "text/code_page.h"
#include "text/date_time.h"
#include "text/printable_text.h"
#include "text/utf8.h"
#include "web/request_intake.h"
#include "web/web_options_entry.h"

namespace ModWeb {

using net::Task;

namespace {

// More than any resource that names something has.
constexpr std::size_t kMostOfResource = 4096;

Task<> Ignore() { co_return; }

}  // namespace

WebServer::WebServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_{environment_.loop, draining_,
               [this](const std::string& error) { environment_.program.errors.LogError(error); }},
      WebSvrSock_(sockets_, *this, net::ConnectionSlots::BusySlot::kEvict, ""),
      cgi_(environment_),
      searchCopies_(environment_),
      heldOptions_(environment_.program.Holders(),
                   [this](settings::Change& change) { WriteSettings(change, EntryOf(options_)); }) {
  options_.SetDefaults(environment_.program);
}

bool WebServer::LoadOptions() {
  options_.LoadWebOptions(environment_.program, WebSvrSock_.Listener().LocalAddress());
  return !options_.settingsFault;
}

bool WebServer::StartWebListener() {
  failure_.reset();
  if (!LoadOptions()) {
    failure_ = {.reason = options_.settingsFault, .settings = true};
    return false;
  }
  std::error_code error;
  WebSvrSock_.Listen(options_.WebPort, error);
  if (error) {
    failure_ = {error, options_.WebPort};
    environment_.program.errors.LogError(platform::SystemMessage(error));
    return false;
  }
  core::EnterInHostsFile(environment_, options_.WebDomain);
  WebSvrSock_.CreateSlots();
  return true;
}

bool WebServer::StopWebListener() {
  WebSvrSock_.Close();
  cgi_.Stop();
  searchCopies_.Stop();
  draining_.DropAll();
  return !IsRunning();
}

std::vector<net::ConnectionReport> WebServer::Connections() const {
  return WebSvrSock_.Report("HTTP");
}

Task<> WebServer::OnDataArrival(int, Client client) { return OnWebDataArrival(std::move(client)); }

// One arrival is one request; nothing is kept for a later one, and no request while it is answered.
Task<> WebServer::OnWebDataArrival(Client client) {
  const std::string requestText = text::FromSystem(client->GetData());
  switch (MethodOf(requestText)) {
    case RequestMethod::kGet:
      CurrentMethod_ = "GET";
      CurrentResource_ = CutGetResource(requestText).value_or(CurrentResource_);
      client->Doing("GET " + CurrentResource_);
      return ServeGetRequest(client);
    case RequestMethod::kPost:
      CurrentMethod_ = "POST";
      CurrentResource_ = CutPostResource(requestText).value_or(CurrentResource_);
      client->Doing("POST " + CurrentResource_);
      return ServePostRequest(requestText, client);
    case RequestMethod::kOther:
      break;
  }
  return Ignore();
}

// A client may shut its side once it has asked; it still gets its answer.
void WebServer::OnClose(int slot) { WebSvrSock_[slot].Current()->CloseWhenHandlersEnd(); }

void WebServer::OnError(int slot) { WebSvrSock_[slot].Close(); }

void WebServer::LogAccess(const Client& client, std::string_view result) const {
  std::string line = "时间：" + text::DateTimeText(std::chrono::system_clock::now());
  line += "  客户机IP：" + client->RemoteAddress();
  line += "  请求方法：" + CurrentMethod_;
  line += "  请求资源：" + text::Printable(CurrentResource_, kMostOfResource);
  line += "  " + std::string(result);
  files::AppendLine(environment_.program.File("Web.log"), line);
}

std::string WithoutFirstCharacter(const std::string& resource) {
  return resource.empty() ? resource : resource.substr(text::CharacterEnd(resource, 0));
}

}  // namespace ModWeb
