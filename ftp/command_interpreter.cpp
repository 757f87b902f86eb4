// What each command does, and what it answers. Every one is open to everybody from the first line
// on.

#include <algorithm>
#include <unordered_map>

#include "ftp/command_text.h"
#include "ftp/ftp_server.h"
#include "ftp/path_mapping.h"
#include "ftp/replies.h"
#include "ftp/trapped.h"
#include "text/code_page.h"

namespace ModFtp {

using net::Task;

namespace {

// The first line of a command, without a password.
std::string ShownCommand(const std::string& word, const std::string& text) {
  return word == "PASS" ? word : text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace

FtpServer::Handler FtpServer::HandlerOf(const std::string& word) {
  static const std::unordered_map<std::string_view, Handler> handlers = {
      {"", &FtpServer::OnEmptyWord}, {"USER", &FtpServer::OnUser}, {"PASS", &FtpServer::OnPass},
      {"OPTS", &FtpServer::OnOpts},  {"SYST", &FtpServer::OnSyst}, {"SITE", &FtpServer::OnSite},
      {"PWD", &FtpServer::OnPwd},    {"TYPE", &FtpServer::OnType}, {"CWD", &FtpServer::OnCwd},
      {"NOOP", &FtpServer::OnNoop},  {"PORT", &FtpServer::OnPort}, {"LIST", &FtpServer::OnList},
      {"PASV", &FtpServer::OnPasv},  {"REST", &FtpServer::OnRest}, {"FEAT", &FtpServer::OnFeat},
      {"RETR", &FtpServer::OnRetr},  {"QUIT", &FtpServer::OnQuit}, {"SIZE", &FtpServer::OnSize},
      {"MKD", &FtpServer::OnMkd},    {"RNFR", &FtpServer::OnRnfr}, {"RNTO", &FtpServer::OnRnto},
      {"STOR", &FtpServer::OnStor},  {"DELE", &FtpServer::OnDele}, {"RMD", &FtpServer::OnRmd},
  };
  const auto handler = handlers.find(word);
  return handler == handlers.end() ? &FtpServer::OnUnknown : handler->second;
}

Task<> FtpServer::HandleFtpCommand(int slot, Client client, std::string text) {
  const std::string word = CommandWord(text);
  client->Doing(ShownCommand(word, text));
  const Handler handler = HandlerOf(word);
  Task<std::string> running = (this->*handler)({slot, client, std::move(text)});
  const std::string reply = co_await running;
  client->SendData(reply);
  // A client that reads no replies is not read either, after some of them.
  Task<> sent = client->Sent();
  co_await sent;
}

// What is too long to arrive at once is refused once: its later pieces have no word.
Task<> FtpServer::RefuseCommand(Client client, std::string beginning) {
  client->Doing("a command that is too long");
  if (CommandWord(beginning).empty()) {
    state_.abortRequested = true;
    co_return;
  }
  client->SendData(ReplyLine(replies::kUnknown));
  Task<> sent = client->Sent();
  co_await sent;
}

// No reply. A RETR that is under way, whoever's, will report itself cut short, and is not.
Task<std::string> FtpServer::OnEmptyWord(Command) {
  state_.abortRequested = true;
  co_return "";
}

Task<std::string> FtpServer::OnUnknown(Command) { co_return ReplyLine(replies::kUnknown); }

// Session

Task<std::string> FtpServer::OnUser(Command) {
  state_.lastCommand = "USER";
  co_return ReplyLine(replies::kUser);
}

Task<std::string> FtpServer::OnPass(Command) { co_return ReplyLine(replies::kPass); }

Task<std::string> FtpServer::OnOpts(Command) { co_return ReplyLine(replies::kUnknown); }

Task<std::string> FtpServer::OnSyst(Command) { co_return ReplyLine(replies::kSystem); }

Task<std::string> FtpServer::OnSite(Command command) {
  co_return ReplyLine(AsksForHelp(command.text) ? replies::kSiteHelp : replies::kUnknown);
}

Task<std::string> FtpServer::OnNoop(Command) {
  state_.lastCommand = "NOOP";
  co_return ReplyLine(replies::kDone);
}

Task<std::string> FtpServer::OnType(Command command) {
  const bool done = Succeeds(Errors(), [&] {
    state_.transferType = CutTransferType(command.text);
    return true;
  });
  co_return ReplyLine(done ? replies::kDone : replies::kTypeFailed);
}

Task<std::string> FtpServer::OnRest(Command command) {
  const std::string offset = CutRestart(command.text).value_or("0");
  co_return ReplyLine(std::string(replies::kRestart) + offset);
}

Task<std::string> FtpServer::OnFeat(Command) { co_return ReplyLine(replies::kUnknown); }

Task<std::string> FtpServer::OnSize(Command) { co_return ReplyLine(replies::kSize); }

// The data connections of all sessions end; the control connection stays, it is the client's to
// close.
Task<std::string> FtpServer::OnQuit(Command) {
  for (int slot = 1; slot <= kLastSlot; ++slot) {
    if (!FtpSvrDataSock(slot).IsClosed()) CloseDataSocket(slot);
  }
  co_return ReplyLine(replies::kQuit);
}

// Directories

Task<std::string> FtpServer::OnPwd(Command command) {
  FtpSession& session = Session(command.slot);
  const bool done = Succeeds(Errors(), [&] {
    if (session.physicalDir == state_.ftpRoot) session.ftpDir = "/";
    if (session.physicalDir.empty()) {
      session.physicalDir = state_.ftpRoot;
      session.ftpDir = "/";
    }
    return true;
  });
  if (!done) co_return ReplyLine(replies::kPwdFailed);
  co_return ReplyLine(std::string(replies::kPwdBegin) + session.ftpDir +
                      std::string(replies::kPwdEnd));
}

Task<std::string> FtpServer::OnCwd(Command command) {
  if (Succeeds(Errors(), [&] { return ChangeFtpDirectory(command.slot, command.text); })) {
    co_return ReplyLine(replies::kCwd);
  }
  co_return ReplyLine(std::string(replies::kCwdFailedBegin) + Session(command.slot).ftpDir +
                      std::string(replies::kCwdFailedEnd));
}

// The reply names the current directory, not the new one.
Task<std::string> FtpServer::OnMkd(Command command) {
  if (!Succeeds(Errors(), [&] { return MakeFtpDirectory(command.slot, command.text); })) {
    co_return ReplyLine(replies::kMkdFailed);
  }
  co_return ReplyLine(std::string(replies::kMkdBegin) + Session(command.slot).physicalDir +
                      std::string(replies::kMkdEnd));
}

Task<std::string> FtpServer::OnRmd(Command command) {
  const bool done =
      Succeeds(Errors(), [&] { return RemoveFtpDirectory(command.slot, command.text); });
  co_return ReplyLine(done ? replies::kRmd : replies::kRmdFailed);
}

// Files

Task<std::string> FtpServer::OnDele(Command command) {
  Task<Deletion> deleting = Trapped(Errors(), DeleteFtpFile(command.slot, command.text));
  const Deletion deletion = co_await deleting;
  if (deletion.done) co_return ReplyLine(replies::kDele);
  co_return ReplyLine(std::string(replies::kDeleFailed) + deletion.reason);
}

Task<std::string> FtpServer::OnRnfr(Command command) {
  const bool done = Succeeds(Errors(), [&] { return RenameFrom(command.slot, command.text); });
  co_return ReplyLine(done ? replies::kRnfr : replies::kRnfrFailed);
}

Task<std::string> FtpServer::OnRnto(Command command) {
  const bool done = Succeeds(Errors(), [&] { return RenameTo(command.slot, command.text); });
  co_return ReplyLine(done ? replies::kRnto : replies::kRntoFailed);
}

}  // namespace ModFtp
