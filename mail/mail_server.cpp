#include "mail/mail_server.h"

#include <algorithm>
#include <iterator>

#include "core/hosts_file.h"
#include "core/service_sockets.h"
#include "mail/command_word.h"
#include "mail/mail_log.h"
#include "mail/pop3_replies.h"
#include "mail/pop3_transfer.h"
#include "mail/reply_line.h"
#include "mail/smtp_replies.h"
#include "platform/native_path.h"
#include "platform/system_message.h"
#include "text/code_page.h"
#include "text/printable_text.h"

namespace ModMail {

using net::ConnectionSlots;
using net::Task;

namespace {

bool HasPassword(std::string_view word) { return word == "PASS" || word == "AUTH"; }

// Shows a command's first line, without a password. A chunk of a message changes nothing.
void NoteCommand(net::Connection& client, std::string_view arrival) {
  constexpr std::size_t kMost = 120;
  const std::string word = CommandWord(arrival);
  const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
  if (word.size() < 3 || !std::all_of(word.begin(), word.begin() + 3, isLetter)) return;
  // Whatever has begun and is not finished by now, will not be.
  client.Finish(net::ActivityEnd::kFailed);
  if (HasPassword(word)) return client.Doing(word);
  const std::string_view beginning = arrival.substr(0, kMost);
  const std::string line = text::FromSystem(beginning.substr(0, beginning.find_first_of("\r\n")));
  client.Doing(text::Printable(line, kMost - std::string_view("…").size()));
}

}  // namespace

MailServer::MailServer(core::ServiceEnvironment environment)
    : environment_(std::move(environment)),
      draining_(environment_.loop),
      sockets_(core::SessionSocketsOf(environment_, draining_)),
      smtp_(*this, MailSvrSmtpSock_, &smtpSessions_, &MailServer::OnSmtpDataArrival),
      pop3_(*this, MailSvrPop3Sock_, nullptr, &MailServer::OnPop3DataArrival),
      MailSvrSmtpSock_(sockets_, smtp_, "SMTP", ConnectionSlots::BusySlot::kEvict,
                       ReplyLine(smtp::kGreeting)),
      MailSvrPop3Sock_(sockets_, pop3_, "POP3", ConnectionSlots::BusySlot::kEvict,
                       ReplyLine(pop3::kGreeting)),
      heldOptions_(
          environment_.program.Holders(),
          [this](settings::Change& change) { settings::WriteHeld(change, options_.Describe()); }),
      store_(environment_.program, options_),
      flushing_(environment_, store_.Unflushed()),
      smtpSessions_([this](MailSessionState& state) {
        store_.Serve(&state);
        smtpInterpreter_.Abandon();
        store_.Serve(nullptr);
      }),
      smtpInterpreter_(store_, environment_.protection),
      pop3Interpreter_(store_, environment_.protection),
      receipt_(store_, options_),
      unpacking_(environment_) {
  options_.SetDefaults(environment_.program);
}

bool MailServer::LoadOptions() {
  environment_.protection.Load();
  options_.LoadMailOptions(environment_.program, MailSvrSmtpSock_.Listener().LocalAddress());
  return !options_.settingsFault;
}

void MailServer::SetMailRoot(std::string_view root) {
  options_.mailRoot = platform::PathTextFromUser(root);
}

void MailServer::EnsureMailRoot() { options_.EnsureMailRoot(environment_.program); }

bool MailServer::StartMailListeners() {
  if (!LoadOptions()) {
    failure_ = {.reason = options_.settingsFault, .settings = true};
    return false;
  }
  if (!ListenOnBothPorts()) {
    CloseMailSockets();
    return false;
  }
  core::EnterInHostsFile(environment_, options_.mailDomain);
  MailSvrSmtpSock_.CreateSlots();
  MailSvrPop3Sock_.CreateSlots();
  unpacking_.Start();
  return true;
}

bool MailServer::ListenOnBothPorts() {
  const std::pair<net::ConnectionSlots&, std::int16_t> listeners[] = {
      {MailSvrSmtpSock_, options_.smtpPort}, {MailSvrPop3Sock_, options_.pop3Port}};
  failure_.reset();
  for (const auto& [slots, port] : listeners) {
    std::error_code error;
    slots.Listen(port, error);
    if (!error) continue;
    environment_.program.errors.LogError(platform::SystemMessage(error));
    failure_ = {error, port};
    return false;
  }
  return true;
}

std::vector<net::ConnectionReport> MailServer::Connections() const {
  std::vector<net::ConnectionReport> report = MailSvrSmtpSock_.Report();
  std::vector<net::ConnectionReport> pop3 = MailSvrPop3Sock_.Report();
  report.insert(report.end(), std::make_move_iterator(pop3.begin()),
                std::make_move_iterator(pop3.end()));
  return report;
}

void MailServer::Disconnect(const std::string& protocol, int slot) {
  const bool isPop3 = protocol == "POP3";
  (isPop3 ? MailSvrPop3Sock_ : MailSvrSmtpSock_).Disconnect(slot);
  if (!isPop3) smtpSessions_.EndOf(slot);
}

bool MailServer::CloseMailSockets() {
  MailSvrSmtpSock_.Close();
  MailSvrPop3Sock_.Close();
  smtpSessions_.EndAll();
  flushing_.Stop();
  unpacking_.Stop();
  draining_.DropAll();
  return !MailSvrSmtpSock_.IsListening() && !MailSvrPop3Sock_.IsListening();
}

Task<> MailServer::OnSmtpDataArrival(int slot, Client client) {
  SmtpOutcome outcome;
  outcome.rest = client->GetData();
  do {
    outcome = AnswerSmtp(slot, client, std::move(outcome.rest));
  } while (!outcome.rest.empty());
  if (outcome.chunk) {
    Task<> stored = AwaitDisk(client);
    co_await stored;
  }
  Task<> taken = AwaitReader(client);
  co_await taken;
}

// Usually all sessions share one state. A fault of the
// interpreter is logged like that of any handler, and the client gets no reply.
SmtpOutcome MailServer::AnswerSmtp(int slot, const Client& client, std::string arrival) {
  const bool isApart = environment_.protection.SeparatesSessions();
  store_.Serve(isApart ? &smtpSessions_.Of(slot, client) : nullptr);
  const bool isMessage = smtpInterpreter_.IsChunk(arrival);
  const bool isInside = receipt_.IsReceiving(*client) && CommandWord(arrival) != "DATA";
  if (!isMessage && !isInside) NoteCommand(*client, arrival);
  SmtpOutcome outcome = smtpInterpreter_.Interpret(std::move(arrival));
  if (isMessage && outcome.chunk) receipt_.Note(*client, *outcome.chunk);
  if (outcome.quit) LogQuit(client, kReceivedMail);
  if (outcome.reply) client->SendData(ReplyLine(*outcome.reply));
  if (!outcome.messages.empty()) unpacking_.Add(outcome.messages);
  return outcome;
}

Task<> MailServer::OnPop3DataArrival(int slot, Client client) {
  Pop3Session& session = pop3Sessions_.Of(slot, client);
  store_.Serve(nullptr);
  Pop3Outcome outcome = AnswerOf(*client, session);
  if (outcome.password) {
    Task<Pop3Outcome> trying = TrySignIn(client, session, std::move(*outcome.password));
    outcome = co_await trying;
  }
  if (outcome.quit) LogQuit(client, kSentMail);
  Task<> sending = SendOutcome(client, std::move(outcome), environment_.program.errors);
  co_await sending;
  Task<> taken = AwaitReader(client);
  co_await taken;
  client->Finish(net::ActivityEnd::kComplete);
}

// Not part of the coroutine above, which would keep the arrival while it sends the answer, possibly
// for minutes.
Pop3Outcome MailServer::AnswerOf(net::Connection& client, Pop3Session& session) {
  const std::string arrival = client.GetData();
  NoteCommand(client, arrival);
  try {
    Pop3Outcome outcome = pop3Interpreter_.Interpret(arrival, session);
    if (outcome.retrieves && client.IsObserved()) ShowRetrieval(client, outcome);
    return outcome;
  } catch (const std::exception& fault) {
    // Clients wait for a reply to every command.
    environment_.program.errors.LogError(fault.what());
    return {ReplyLine(pop3::kError)};
  }
}

// The session lives as long as its connection's handlers.
Task<Pop3Outcome> MailServer::TrySignIn(Client client, Pop3Session& session, std::string password) {
  auto answer = core::Accounts::Answer::kBusy;
  try {
    Task<core::Accounts::Answer> trying =
        environment_.protection.TrySignIn(client, session.login, std::move(password));
    answer = co_await trying;
  } catch (const net::HandlerEnded&) {
    throw;
  } catch (const std::exception& fault) {
    environment_.program.errors.LogError(fault.what());
  }
  co_return pop3Interpreter_.EndSignIn(session, answer);
}

void MailServer::ShowRetrieval(net::Connection& client, const Pop3Outcome& outcome) {
  client.Begin({.kind = net::Activity::Kind::kCollectMail,
                .what = outcome.user,
                .path = outcome.message ? outcome.message->path : std::string()});
  if (outcome.message) return;
  const bool isMissing = !outcome.rest.empty();
  client.Finish(isMissing ? net::ActivityEnd::kNotFound : net::ActivityEnd::kFailed);
}

// The sender of a large message is not read until the disk has its beginning.
Task<> MailServer::AwaitDisk(Client client) {
  if (!flushing_.Begin()) co_return;
  Task<> pause = ReadNothingUntil(client, flushing_.AwaitDisk());
  co_await pause;
}

// A client that does not read its replies is not read either, so at most one reply waits.
Task<> MailServer::AwaitReader(Client client) {
  if (!client->HasUnsentBytes()) co_return;
  Task<> pause = ReadNothingUntil(client, client->Sent());
  co_await pause;
}

Task<> MailServer::ReadNothingUntil(Client client, Task<> end) {
  client->HoldReading(true);
  co_await end;
  client->HoldReading(false);
}

void MailServer::LogQuit(const Client& client, std::string_view event) const {
  store_.WriteMailLog(
      MailLogLine(std::chrono::system_clock::now(), client->RemoteAddress(), event));
}

Task<> MailServer::Engine::OnDataArrival(int slot, Client client) {
  return (server_.*onArrival_)(slot, std::move(client));
}

// Nothing more arrives of what the session had begun.
void MailServer::Engine::OnClose(int slot) {
  if (sessions_ != nullptr) sessions_->EndOf(slot);
  slots_[slot].Current()->CloseWhenHandlersEnd();
}

void MailServer::Engine::OnError(int slot) {
  if (sessions_ != nullptr) sessions_->EndOf(slot);
  slots_[slot].Close();
}

void MailServer::Engine::OnIdle(int slot) {
  if (sessions_ != nullptr) sessions_->EndOf(slot);
  slots_[slot].Close(net::ActivityEnd::kIdle);
}

}  // namespace ModMail
