#pragma once

// The mail server: takes mail for the local accounts by SMTP, hands it out by POP3, and unpacks
// each received message into files. It relays nothing and sends no mail of its own.
//
// The store with its session variables is one for all connections of both protocols.

#include <memory>
#include <string>

#include "core/connection_slots.h"
#include "core/draining_connections.h"
#include "core/program.h"
#include "core/service.h"
#include "mail/mail_options.h"
#include "mail/mailbox_store.h"
#include "mail/pop3_interpreter.h"
#include "mail/smtp_interpreter.h"
#include "mail/unpack_queue.h"

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
  std::vector<core::ConnectionReport> Connections() const override;
  core::Traffic TotalTraffic() const override { return sockets_.traffic; }
  std::optional<core::StartFailure> LastFailure() const override { return failure_; }

  const MailOptions& Options() const { return options_; }

  /// Takes another mail root at once, also while the server runs. `root`: in the user's own form.
  void SetMailRoot(std::string_view root);

  /// Reads the mail root again if the one in memory is empty.
  void EnsureMailRoot();

  /// The ports that are listened on; 0 while stopped.
  std::uint16_t SmtpPort() const { return MailSvrSmtpSock_.Listener().LocalPort(); }
  std::uint16_t Pop3Port() const { return MailSvrPop3Sock_.Listener().LocalPort(); }

  /// Whether no received message is being unpacked.
  bool HasUnpackedAll() const { return unpacking_.IsIdle(); }

 private:
  using Client = std::shared_ptr<core::Connection>;

  // The engine of one of the two arrays.
  class Engine : public core::SlotEngine {
   public:
    using Handler = core::Task<> (MailServer::*)(int slot, Client client);
    Engine(MailServer& server, core::ConnectionSlots& slots, Handler onArrival)
        : server_(server), slots_(slots), onArrival_(onArrival) {}

    core::Task<> OnDataArrival(int slot, Client client) override;
    void OnClose(int slot) override;
    void OnError(int slot) override;

   private:
    MailServer& server_;
    core::ConnectionSlots& slots_;
    Handler onArrival_;
  };

  bool ListenOnBothPorts();
  core::Task<> OnSmtpDataArrival(int slot, Client client);
  core::Task<> OnPop3DataArrival(int slot, Client client);
  Pop3Outcome AnswerOf(core::Connection& client);
  core::Task<> AwaitReader(Client client);
  void LogQuit(const Client& client, std::string_view event) const;

  // Sending (pop3_transfer.cpp)
  core::Task<> SendOutcome(Client client, Pop3Outcome outcome);
  core::Task<> SendRest(Client client, StoredMessage message);

  core::ServiceEnvironment environment_;
  core::DrainingConnections draining_;
  core::SocketContext sockets_;
  Engine smtp_;
  Engine pop3_;
  core::ConnectionSlots MailSvrSmtpSock_;
  core::ConnectionSlots MailSvrPop3Sock_;
  std::optional<core::StartFailure> failure_;
  MailOptions options_;
  core::SettingsHolders::Holder heldOptions_;
  MailboxStore store_;
  SmtpInterpreter smtpInterpreter_;
  Pop3Interpreter pop3Interpreter_;
  UnpackQueue unpacking_;
};

}  // namespace ModMail
