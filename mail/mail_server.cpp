#include "mail/mail_server.h"

#include "core/hosts_file.h"

namespace ModMail {
namespace {

// The two blanks and the blank at the end are settled.
constexpr const char* kSmtpGreeting = "220  SMTP server ready \r\n";
constexpr const char* kPop3Greeting = "+OK  POP3 service ready \r\n";

}  // namespace

using core::ConnectionSlots;
using core::Task;

MailServer::MailServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_{environment_.loop, draining_,
               [this](const std::string& error) { environment_.program.errors.LogError(error); }},
      smtp_(*this, MailSvrSmtpSock_, &MailServer::OnSmtpDataArrival),
      pop3_(*this, MailSvrPop3Sock_, &MailServer::OnPop3DataArrival),
      MailSvrSmtpSock_(sockets_, smtp_, ConnectionSlots::BusySlot::kEvict, kSmtpGreeting),
      MailSvrPop3Sock_(sockets_, pop3_, ConnectionSlots::BusySlot::kEvict, kPop3Greeting) {}

bool MailServer::LoadOptions() {
  options_.LoadMailOptions(environment_.program, MailSvrSmtpSock_.Listener().LocalAddress());
  return true;
}

bool MailServer::StartMailListeners() {
  LoadOptions();
  if (!ListenOnBothPorts()) {
    CloseMailSockets();
    return false;
  }
  core::AddHostsEntry(environment_.hostsFile, "127.0.0.1", options_.mailDomain);
  MailSvrSmtpSock_.CreateSlots();
  MailSvrPop3Sock_.CreateSlots();
  return true;
}

bool MailServer::ListenOnBothPorts() {
  std::error_code error;
  MailSvrSmtpSock_.Listen(options_.smtpPort, error);
  if (!error) MailSvrPop3Sock_.Listen(options_.pop3Port, error);
  if (error) environment_.program.errors.LogError(error.message());
  return !error;
}

bool MailServer::CloseMailSockets() {
  MailSvrSmtpSock_.Close();
  MailSvrPop3Sock_.Close();
  draining_.DropAll();
  return !MailSvrSmtpSock_.IsListening() && !MailSvrPop3Sock_.IsListening();
}

Task<> MailServer::OnSmtpDataArrival(int, Client client) {
  client->GetData();
  co_return;
}

Task<> MailServer::OnPop3DataArrival(int, Client client) {
  client->GetData();
  co_return;
}

Task<> MailServer::Engine::OnDataArrival(int slot, Client client) {
  return (server_.*onArrival_)(slot, std::move(client));
}

void MailServer::Engine::OnClose(int slot) { slots_[slot].Current()->CloseWhenHandlersEnd(); }

void MailServer::Engine::OnError(int slot) { slots_[slot].Close(); }

}  // namespace ModMail
