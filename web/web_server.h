#pragma once

// The Web server: answers GET with files of the Web root and POST with the pages of CGI programs.
// Usually it does so in the manner of HTTP/0.9, and if the user wants by HTTP/1.1
// (web/answer_options.h).
//
// It keeps the listener and the connections; BareAnswers and HttpConversations answer.

#include <memory>
#include <string>

#include "core/service.h"
#include "core/service_environment.h"
#include "files/client_files.h"
#include "net/connection_slots.h"
#include "net/draining_connections.h"
#include "settings/program.h"
#include "web/bare/bare_answers.h"
#include "web/http/http_conversations.h"
#include "web/programs.h"
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
  core::Ports PortsInUse() const override { return {ListeningPort()}; }
  core::Ports PortsToUse() const override { return {options_.WebPort}; }
  std::vector<net::ConnectionReport> Connections() const override;
  bool HasRoomForATest() const override { return WebSvrSock_.AreNextFree(2); }
  net::Traffic TotalTraffic() const override { return sockets_.traffic; }
  void Observe(net::ActivityObserver* observer) override { sockets_.observer = observer; }
  void Disconnect(const std::string& protocol, int slot) override;
  std::optional<core::StartFailure> LastFailure() const override { return failure_; }

  const WebOptions& Options() const { return options_; }

  /// Replaces all default documents in memory; entries past the end of `names` become empty.
  void SetDefaultPages(const std::vector<std::string>& names);

  /// The listening port; 0 while stopped.
  std::uint16_t ListeningPort() const { return WebSvrSock_.Listener().LocalPort(); }

 private:
  using Client = std::shared_ptr<net::Connection>;

  net::Task<> OnDataArrival(int slot, Client client) override;
  void OnClose(int slot) override;
  void OnError(int slot) override;
  void OnIdle(int slot) override;

  core::ServiceEnvironment environment_;
  net::DrainingConnections draining_;
  net::SocketContext sockets_;
  net::ConnectionSlots WebSvrSock_;
  std::optional<core::StartFailure> failure_;
  WebOptions options_;
  files::ClientFiles site_;  // below the Web root
  Programs programs_;
  SearchCopies searchCopies_;
  BareAnswers bare_;
  HttpConversations http_;

  settings::SettingsHolders::Holder heldOptions_;
};

}  // namespace ModWeb
