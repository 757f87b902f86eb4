#pragma once

// The Web server: answers GET with files of the Web root and POST with the pages of CGI programs,
// in the manner of HTTP/0.9, without status line or header; the end of the connection ends the
// answer.
//
// CurrentMethod and CurrentResource are one pair for all connections and are never cleared: a
// request without a resource is served with the one before, and a log line shows the newest.

#include <memory>
#include <string>

#include "core/service.h"
#include "core/service_environment.h"
#include "net/connection_slots.h"
#include "net/draining_connections.h"
#include "settings/program.h"
#include "web/cgi_queue.h"
#include "web/search_copies.h"
#include "web/web_options.h"

namespace ModWeb {

class WebServer : public core::Service, private net::SlotEngine {
 public:
  explicit WebServer(core::ServiceEnvironment environment);
  ~WebServer() override { StopWebListener(); }

  bool StartWebListener();
  bool StopWebListener();

  bool Start() override { return StartWebListener(); }
  bool Stop() override { return StopWebListener(); }
  bool IsRunning() const override { return WebSvrSock_.IsListening(); }
  bool LoadOptions() override;
  std::string Domain() const override { return options_.WebDomain; }
  std::string RootDir() const override { return options_.WebRootDir; }
  std::vector<net::ConnectionReport> Connections() const override;
  net::Traffic TotalTraffic() const override { return sockets_.traffic; }
  std::optional<core::StartFailure> LastFailure() const override { return failure_; }

  const WebOptions& Options() const { return options_; }

  /// The port that is listened on; 0 while stopped.
  std::uint16_t ListeningPort() const { return WebSvrSock_.Listener().LocalPort(); }

 private:
  using Client = std::shared_ptr<net::Connection>;

  // Intake
  net::Task<> OnDataArrival(int slot, Client client) override;
  net::Task<> OnWebDataArrival(Client client);
  void OnClose(int slot) override;
  void OnError(int slot) override;

  // Resolution (resource_resolution.cpp)
  net::Task<> ServeGetRequest(Client client);
  net::Task<> RefuseGet(Client client);
  std::string FindDefaultPage() const;
  void CopyIntoSearch(const std::string& path, const std::string& resource);
  std::string PathInRoot(std::string_view name) const;

  // Sending (response_sending.cpp)
  net::Task<> SendWebFile(std::string path, Client client);
  net::Task<> SendHtmlFile(std::string path, Client client);
  net::Task<> SendPage(platform::File page, Client client);
  net::Task<> SendFile(std::string path, Client client, bool pageIfMissing);
  net::Task<> SendOpened(platform::File file, Client client, bool pageIfMissing);
  void EndResponse(const Client& client, const std::optional<std::string>& failure) const;
  void SendNotFoundPage(const Client& client) const;

  // CGI (cgi_execution.cpp)
  net::Task<> ServePostRequest(std::string requestText, Client client);
  net::Task<> RefusePost(Client client);
  net::Task<platform::File> RunCgiProgram(std::string cgiDir, std::string resource,
                                          std::string body);

  // One line of Web.log for the request that came last.
  void LogAccess(const Client& client, std::string_view result) const;

  core::ServiceEnvironment environment_;
  net::DrainingConnections draining_;
  net::SocketContext sockets_;
  net::ConnectionSlots WebSvrSock_;
  std::optional<core::StartFailure> failure_;
  WebOptions options_;
  CgiQueue cgi_;
  SearchCopies searchCopies_;

  settings::SettingsHolders::Holder heldOptions_;

  std::string CurrentMethod_;
  std::string CurrentResource_;
};

/// `resource` without its first character, which is assumed to be "/" and is not checked.
std::string WithoutFirstCharacter(const std::string& resource);

}  // namespace ModWeb
