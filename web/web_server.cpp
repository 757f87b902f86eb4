#include "web/web_server.h"

#include <algorithm>

#include "core/hosts_file.h"
#include "core/service_sockets.h"
#include "platform/system_message.h"
#include "text/code_page.h"
#include "text/path_text.h"
#include "web/web_log.h"

namespace ModWeb {

using net::Task;
using platform::File;

namespace {

// Of a client that may send another request by HTTP, or has begun one. Browsers expect that.
constexpr std::chrono::milliseconds kLongestSilence = std::chrono::seconds(20);

Task<> Ignore() { co_return; }

}  // namespace

WebServer::WebServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_(core::SocketsOf(environment_, draining_)),
      WebSvrSock_(sockets_, *this, "HTTP", net::ConnectionSlots::BusySlot::kEvict, ""),
      site_(options_.WebRootDir, environment_.protection.OfFiles()),
      programs_(environment_, site_),
      interpreter_(*this, options_, session_),
      sender_(site_, environment_.program.errors, options_.answers),
      searchCopies_(environment_),
      http_({environment_.program, options_, site_, programs_, searchCopies_}),
      heldOptions_(environment_.program.Holders(), [this](settings::Change& change) {
        settings::WriteHeld(change, options_.Describe());
      }) {
  options_.SetDefaults(environment_.program);
  sockets_.idleLimit = [this] {
    return options_.answers.http ? kLongestSilence : std::chrono::milliseconds(0);
  };
}

bool WebServer::LoadOptions() {
  environment_.protection.Load();
  options_.LoadWebOptions(environment_.program, WebSvrSock_.Listener().LocalAddress());
  programs_.SetRoot(options_.WebRootDir);
  return !options_.settingsFault;
}

void WebServer::SetDefaultPages(const std::vector<std::string>& names) {
  DefaultPageNames& pages = options_.DefaultPages;
  pages = {};
  std::copy_n(names.begin(), std::min(names.size(), pages.size()), pages.begin());
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
  programs_.Stop();
  searchCopies_.Stop();
  draining_.DropAll();
  return !IsRunning();
}

std::vector<net::ConnectionReport> WebServer::Connections() const { return WebSvrSock_.Report(); }

void WebServer::Disconnect(const std::string&, int slot) { WebSvrSock_.Disconnect(slot); }

Task<> WebServer::OnDataArrival(int slot, Client client) {
  if (options_.answers.http) return http_.OnArrival(slot, std::move(client));
  return OnWebDataArrival(std::move(client));
}

// Nothing of an arrival is kept for a later one, and its text is gone when the answer begins.
Task<> WebServer::OnWebDataArrival(Client client) {
  Decision decision = interpreter_.Interpret(text::FromSystem(client->GetData()));
  if (!decision.shown.empty()) ShowRequest(*client, decision);
  if (!decision.fault.empty()) {
    environment_.program.errors.LogError(decision.fault);
    client->Finish(net::ActivityEnd::kFailed);
  }
  switch (decision.action) {
    case Decision::Action::kSendFile:
      return sender_.SendWebFile(PathInRoot(decision.resource), std::move(client));
    case Decision::Action::kSendHtmlFile:
      return ServeHtmlFile(std::move(decision.resource), std::move(client));
    case Decision::Action::kRunProgram:
      return ServeProgram(std::move(decision.resource), std::move(decision.body),
                          std::move(client));
    case Decision::Action::kRefuseGet:
      return RefuseGet(std::move(client));
    case Decision::Action::kRefusePost:
      return RefusePost(std::move(client));
    case Decision::Action::kNothing:
      break;
  }
  return Ignore();
}

void WebServer::ShowRequest(net::Connection& client, Decision& decision) const {
  net::Activity activity = {.kind = decision.kind, .what = std::move(decision.shown)};
  if (client.IsObserved() && !decision.resource.empty()) {
    const bool isProgram = decision.kind == net::Activity::Kind::kProgram;
    activity.path = PathInRoot((isProgram ? "cgi-bin\\" : "") + decision.resource);
  }
  client.Begin(std::move(activity));
}

// A client may close its side once it has sent its request; it still gets its answer.
void WebServer::OnClose(int slot) { WebSvrSock_[slot].Current()->CloseWhenHandlersEnd(); }

void WebServer::OnError(int slot) { WebSvrSock_[slot].Close(); }

void WebServer::OnIdle(int slot) { WebSvrSock_[slot].Close(net::ActivityEnd::kIdle); }

// Files

Task<> WebServer::ServeHtmlFile(std::string resource, Client client) {
  Task<> sending = sender_.SendHtmlFile(PathInRoot(resource), client);
  co_await sending;
  searchCopies_.AddServed(site_, options_.WebRootDir, resource);
}

bool WebServer::HasFile(const std::string& name) const {
  return site_.FileExists(PathInRoot(name));
}

std::string WebServer::PathInRoot(std::string_view name) const {
  return ModCommon::AddSlash(options_.WebRootDir) + std::string(name);
}

// CGI programs

Task<> WebServer::ServeProgram(std::string resource, std::string body, Client client) {
  File page;
  const bool found = programs_.Exists(resource);
  if (found) {
    Task<File> running = programs_.Run(std::move(resource), std::move(body));
    page = co_await running;
  }
  Task<> sending = sender_.SendPage(
      std::move(page), client, found ? net::ActivityEnd::kFailed : net::ActivityEnd::kNotFound);
  co_await sending;
}

// Refusals

Task<> WebServer::RefuseGet(Client client) {
  SendNotFoundPage(*client);
  client->Finish(net::ActivityEnd::kRefused);
  LogRefusal(environment_.program, *client, session_);
  co_await net::YieldToEvents();
  client->Close();
}

Task<> WebServer::RefusePost(Client client) {
  SendNotFoundPage(*client);
  client->Finish(net::ActivityEnd::kRefused);
  try {
    co_await net::YieldToEvents();
  } catch (const net::HandlerEnded&) {
    // The request of a client that left at once is logged like any other.
  }
  LogRefusal(environment_.program, *client, session_);
  client->Close();
}

}  // namespace ModWeb
