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

constexpr std::size_t kExtensionLength = 4;

Task<> Ignore() { co_return; }

}  // namespace

WebServer::WebServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_(core::SocketsOf(environment_, draining_)),
      WebSvrSock_(sockets_, *this, "HTTP", net::ConnectionSlots::BusySlot::kEvict, ""),
      site_(options_.WebRootDir, environment_.protection.OfFiles()),
      programs_(programFolder_, environment_.protection.OfFiles()),
      interpreter_(*this, options_, session_),
      sender_(site_, environment_.program.errors),
      cgi_(environment_),
      searchCopies_(environment_),
      heldOptions_(environment_.program.Holders(), [this](settings::Change& change) {
        settings::WriteHeld(change, options_.Describe());
      }) {
  options_.SetDefaults(environment_.program);
}

bool WebServer::LoadOptions() {
  environment_.protection.Load();
  options_.LoadWebOptions(environment_.program, WebSvrSock_.Listener().LocalAddress());
  programFolder_ = PathInRoot("cgi-bin\\");
  environment_.protection.SetProgramFolder(programFolder_);
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
  cgi_.Stop();
  searchCopies_.Stop();
  draining_.DropAll();
  return !IsRunning();
}

std::vector<net::ConnectionReport> WebServer::Connections() const { return WebSvrSock_.Report(); }

void WebServer::Disconnect(const std::string&, int slot) { WebSvrSock_.Disconnect(slot); }

Task<> WebServer::OnDataArrival(int, Client client) { return OnWebDataArrival(std::move(client)); }

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

// Files

Task<> WebServer::ServeHtmlFile(std::string resource, Client client) {
  const std::string path = PathInRoot(resource);
  Task<> sending = sender_.SendHtmlFile(path, client);
  co_await sending;
  CopyIntoSearch(path, resource);
}

// While there is a search index, every page that was served is collected beside it.
void WebServer::CopyIntoSearch(const std::string& path, const std::string& resource) {
  if (!HasFile("Search\\Search.ifo")) return;
  const std::string name = "Search\\" + resource;
  searchCopies_.Add(site_.Settled(path), site_.Settled(PathInRoot(name)), name);
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
  const bool found = programs_.FileExists(programFolder_ + resource);
  if (found) {
    Task<File> running = RunCgiProgram(std::move(resource), std::move(body));
    page = co_await running;
  }
  Task<> sending = sender_.SendPage(
      std::move(page), client, found ? net::ActivityEnd::kFailed : net::ActivityEnd::kNotFound);
  co_await sending;
}

// The page is named after the program and lies in the Web root itself, not in cgi-bin.
Task<File> WebServer::RunCgiProgram(std::string resource, std::string body) {
  const std::string outName = resource.substr(0, resource.size() - kExtensionLength) + ".htm";
  CgiJob job = {.program = programs_.Settled(programFolder_ + resource),
                .inPath = programFolder_ + "TempFileIn",
                .outPath = site_.Settled(PathInRoot(outName)),
                .pagePath = programFolder_ + "TempFileOut",
                .body = std::move(body)};
  Task<File> running = cgi_.Run(std::move(job));
  File page = co_await running;
  co_await net::YieldToEvents();
  co_return std::move(page);
}

// Refusals

Task<> WebServer::RefuseGet(Client client) {
  SendNotFoundPage(*client);
  client->Finish(net::ActivityEnd::kRefused);
  LogRefusal(*client);
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
  LogRefusal(*client);
  client->Close();
}

void WebServer::LogRefusal(const net::Connection& client) const {
  files::AppendLine(environment_.program.File("Web.log"),
                    WebLogLine(std::chrono::system_clock::now(), client.RemoteAddress(), session_));
}

}  // namespace ModWeb
