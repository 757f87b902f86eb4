#include "web/web_server.h"

#include <algorithm>

#include "core/hosts_file.h"
#include "core/service_sockets.h"
#include "platform/system_message.h"

namespace ModWeb {

using net::Task;

namespace {

// Of a client that may send another request by HTTP, or has begun one. Browsers expect that.
constexpr std::chrono::milliseconds kLongestSilence = std::chrono::seconds(20);

}  // namespace

WebServer::WebServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_(core::SocketsOf(environment_, draining_)),
      WebSvrSock_(sockets_, *this, "HTTP", net::ConnectionSlots::BusySlot::kEvict, ""),
      site_(options_.WebRootDir, environment_.protection.OfFiles()),
      programs_(environment_, site_),
      searchCopies_(environment_),
      bare_({environment_.program, options_, site_, programs_, searchCopies_}),
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
  return bare_.OnWebDataArrival(std::move(client));
}

// A client may close its side once it has sent its request; it still gets its answer.
void WebServer::OnClose(int slot) { WebSvrSock_[slot].Current()->CloseWhenHandlersEnd(); }

void WebServer::OnError(int slot) { WebSvrSock_[slot].Close(); }

void WebServer::OnIdle(int slot) { WebSvrSock_[slot].Close(net::ActivityEnd::kIdle); }

}  // namespace ModWeb
