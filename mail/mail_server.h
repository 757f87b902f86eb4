#pragma once

// The mail server: receives mail for the local accounts by SMTP, serves it by POP3, and unpacks
// each received message into files. It relays nothing and sends no mail of its own.
//
// It keeps the listeners and connections; SmtpInterpreter and Pop3Interpreter carry out the
// commands. All connections of both protocols share one store and its session state, but for POP3
// where clients have to sign in.

#include <memory>
#include <string>

#include "core/service.h"
#include "core/service_environment.h"
#include "mail/flush_queue.h"
#include "mail/mail_options.h"
#include "mail/mail_sessions.h"
#include "mail/mailbox_store.h"
#include "mail/pop3_interpreter.h"
#include "mail/pop3_session.h"
#include "mail/receipt_report.h"
#include "mail/smtp_interpreter.h"
#include "mail/unpack_queue.h"
#include "net/connection_slots.h"
#include "net/draining_connections.h"
#include "settings/program.h"

namespace ModMail {

class MailServer : public core::Service {
 public:
  explicit MailServer(core::ServiceEnvironment environment);
  ~MailServer() override { CloseMailSockets(); }

  /// Both listeners or neither.
  bool StartMailListeners();
  bool CloseMailSockets();

  bool Start() override { return StartMailListeners(); }
  bool Stop() override { return CloseMailSockets(); }
  bool IsRunning() const override { return MailSvrSmtpSock_.IsListening(); }
  bool LoadOptions() override;
  std::string Domain() const override { return options_.mailDomain; }
  std::string RootDir() const override { return options_.mailRoot; }
  core::Ports PortsInUse() const override { return {SmtpPort(), Pop3Port()}; }
  core::Ports PortsToUse() const override { return {options_.smtpPort, options_.pop3Port}; }
  std::vector<net::ConnectionReport> Connections() const override;
  bool HasRoomForATest() const override {
    return MailSvrSmtpSock_.AreNextFree(2) && MailSvrPop3Sock_.AreNextFree(2);
  }
  net::Traffic TotalTraffic() const override { return sockets_.traffic; }
  void Observe(net::ActivityObserver* observer) override { sockets_.observer = observer; }
  void Disconnect(const std::string& protocol, int slot) override;
  std::optional<core::StartFailure> LastFailure() const override { return failure_; }

  const MailOptions& Options() const { return options_; }

  /// Changes the mail root at once, also while the server runs. `root` is spelled as on the user's
  /// system.
  void SetMailRoot(std::string_view root);

  /// Reads the mail root from the settings if the one in memory is empty.
  void EnsureMailRoot();

  /// The listening ports; 0 while stopped.
  std::uint16_t SmtpPort() const { return MailSvrSmtpSock_.Listener().LocalPort(); }
  std::uint16_t Pop3Port() const { return MailSvrPop3Sock_.Listener().LocalPort(); }

  /// Whether no message is being unpacked.
  bool HasUnpackedAll() const { return unpacking_.IsIdle(); }

 private:
  using Client = std::shared_ptr<net::Connection>;

  // The engine of one protocol's slots.
  class Engine final : public net::SlotEngine {
   public:
    using Handler = net::Task<> (MailServer::*)(int slot, Client client);
    /// `sessions` learn of ends, if there are any.
    Engine(MailServer& server, net::ConnectionSlots& slots, MailSessions* sessions,
           Handler onArrival)
        : server_(server), slots_(slots), sessions_(sessions), onArrival_(onArrival) {}

    net::Task<> OnDataArrival(int slot, Client client) override;
    void OnClose(int slot) override;
    void OnError(int slot) override;
    void OnIdle(int slot) override;

   private:
    MailServer& server_;
    net::ConnectionSlots& slots_;
    MailSessions* sessions_;
    Handler onArrival_;
  };

  bool ListenOnBothPorts();
  net::Task<> OnSmtpDataArrival(int slot, Client client);
  net::Task<> OnPop3DataArrival(int slot, Client client);
  SmtpOutcome AnswerSmtp(int slot, const Client& client, std::string arrival);
  Pop3Outcome AnswerOf(net::Connection& client, Pop3Session& session);
  net::Task<Pop3Outcome> TrySignIn(Client client, Pop3Session& session, std::string password);
  static void ShowRetrieval(net::Connection& client, const Pop3Outcome& outcome);
  net::Task<> AwaitDisk(Client client);
  static net::Task<> AwaitReader(Client client);
  static net::Task<> ReadNothingUntil(Client client, net::Task<> end);
  void LogQuit(const Client& client, std::string_view event) const;

  core::ServiceEnvironment environment_;
  net::DrainingConnections draining_;
  net::SocketContext sockets_;
  Engine smtp_;
  Engine pop3_;
  net::ConnectionSlots MailSvrSmtpSock_;
  net::ConnectionSlots MailSvrPop3Sock_;
  std::optional<core::StartFailure> failure_;
  MailOptions options_;
  settings::SettingsHolders::Holder heldOptions_;
  MailboxStore store_;
  FlushQueue flushing_;
  MailSessions smtpSessions_;
  SmtpInterpreter smtpInterpreter_;
  Pop3Sessions pop3Sessions_;
  Pop3Interpreter pop3Interpreter_;
  ReceiptReport receipt_;
  UnpackQueue unpacking_;
};

}  // namespace ModMail
