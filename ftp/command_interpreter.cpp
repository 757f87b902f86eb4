#include "ftp/command_interpreter.h"

#include <array>

#include "ftp/command_text.h"
#include "ftp/exceptions_as_failures.h"
#include "ftp/path_mapping.h"
#include "ftp/replies.h"

namespace ModFtp {
namespace {

using net::Task;
using Kind = net::Activity::Kind;

// The first line of a command, without a password.
std::string ShownCommand(const std::string& word, const std::string& text) {
  return word == "PASS" ? word : text.substr(0, text.find_first_of("\r\n"));
}

Task<std::string> Ready(std::string reply) { co_return std::move(reply); }

std::string_view ReplyTo(core::Accounts::Answer answer) {
  using Answer = core::Accounts::Answer;
  if (answer == Answer::kRight) return replies::kSignedIn;
  return answer == Answer::kBusy ? replies::kBusy : replies::kWrongPassword;
}

}  // namespace

// A login is needed for what touches the files, a data connection or the transfers of others. PWD
// is among them: before a login, a session has no directory.
const CommandInterpreter::Command* CommandInterpreter::Find(std::string_view word) const {
  using Self = CommandInterpreter;
  static constexpr auto kCommands = std::to_array<Command>({
      {.word = "USER", .function = &Self::OnUser},
      {.word = "PASS", .reply = replies::kPass},
      {.word = "OPTS", .reply = replies::kUnknown},
      {.word = "SYST", .reply = replies::kSystem},
      {.word = "SITE", .function = &Self::OnSite},
      {.word = "PWD", .function = &Self::OnPwd, .needsLogin = true},
      {.word = "TYPE", .function = &Self::OnType},
      {.word = "CWD", .function = &Self::OnCwd, .needsLogin = true},
      {.word = "NOOP", .function = &Self::OnNoop},
      {.word = "PORT", .exchange = &Self::OnPort, .needsLogin = true},
      {.word = "LIST", .exchange = &Self::OnList, .needsLogin = true},
      {.word = "PASV", .function = &Self::OnPasv, .needsLogin = true},
      {.word = "REST", .function = &Self::OnRest},
      {.word = "FEAT", .reply = replies::kUnknown},
      {.word = "RETR", .exchange = &Self::OnRetr, .needsLogin = true},
      {.word = "QUIT", .function = &Self::OnQuit},
      {.word = "SIZE", .reply = replies::kSize, .needsLogin = true},
      {.word = "MKD", .function = &Self::OnMkd, .needsLogin = true},
      {.word = "RNFR", .function = &Self::OnRnfr, .needsLogin = true},
      {.word = "RNTO", .function = &Self::OnRnto, .needsLogin = true},
      {.word = "STOR", .exchange = &Self::OnStor, .needsLogin = true},
      {.word = "DELE", .exchange = &Self::OnDele, .needsLogin = true},
      {.word = "RMD", .function = &Self::OnRmd, .needsLogin = true},
      {.word = "", .function = &Self::OnEmptyWord, .needsLogin = true},
  });
  // In place of the same words above, where clients have to sign in.
  static constexpr auto kSignInCommands = std::to_array<Command>({
      {.word = "USER", .function = &Self::OnUserName},
      {.word = "PASS", .exchange = &Self::OnPassword},
      {.word = "QUIT", .function = &Self::OnSignOut},
  });
  const Command* command =
      protection_.WantsSignIn() ? core::FindCommand(kSignInCommands, word) : nullptr;
  return command == nullptr ? core::FindCommand(kCommands, word) : command;
}

// No coroutine itself: a command that waits costs one frame less.
Task<std::string> CommandInterpreter::HandleFtpCommand(int slot, std::string text) {
  const std::string word = CommandWord(text);
  host_.ShowCommand(slot, ShownCommand(word, text));
  files_.SettleDirectory(slot);
  const Command* command = Find(word);
  if (command == nullptr) return Ready(ReplyLine(replies::kUnknown));
  return Answer(*command, {slot, std::move(text)});
}

// What has no word gets no reply in any case.
Task<std::string> CommandInterpreter::Answer(const Command& command, Request request) {
  if (!protection_.MayGive(command.needsLogin, sessions_[request.slot].login)) {
    return Ready(command.word.empty() ? std::string() : ReplyLine(replies::kNotSignedIn));
  }
  if (command.exchange != nullptr) return (this->*command.exchange)(std::move(request));
  if (command.function == nullptr) return Ready(ReplyLine(command.reply));
  return Ready((this->*command.function)(std::move(request)));
}

// The rest of the command arrives later. It has no word, so it is not refused a second time.
Task<std::string> CommandInterpreter::RefuseCommand(int slot, std::string_view beginning) {
  host_.ShowCommand(slot, "a command that is too long");
  if (CommandWord(beginning).empty()) return Answer(*Find({}), {slot, {}});
  return Ready(ReplyLine(replies::kUnknown));
}

// A RETR in progress, in any session, will report that it was cut short, although it is not.
std::string CommandInterpreter::OnEmptyWord(Request request) {
  sessions_.StateOf(request.slot).abortRequested = true;
  return {};
}

// Session

std::string CommandInterpreter::OnUser(Request request) {
  sessions_.StateOf(request.slot).lastCommand = "USER";
  return ReplyLine(replies::kUser);
}

std::string CommandInterpreter::OnSite(Request request) {
  return ReplyLine(AsksForHelp(request.text) ? replies::kSiteHelp : replies::kUnknown);
}

std::string CommandInterpreter::OnNoop(Request request) {
  sessions_.StateOf(request.slot).lastCommand = "NOOP";
  return ReplyLine(replies::kDone);
}

std::string CommandInterpreter::OnType(Request request) {
  const bool done = Succeeds(errors_, [&] {
    sessions_.StateOf(request.slot).transferType = CutTransferType(request.text);
    return true;
  });
  return ReplyLine(done ? replies::kDone : replies::kTypeFailed);
}

std::string CommandInterpreter::OnRest(Request request) {
  const std::string offset = CutRestart(request.text).value_or("0");
  return ReplyLine(std::string(replies::kRestart) + offset);
}

// The control connection stays open: closing it is up to the client.
std::string CommandInterpreter::OnQuit(Request request) {
  host_.CloseAllDataSockets(request.slot);
  return ReplyLine(replies::kQuit);
}

// Sessions where clients have to sign in

std::string CommandInterpreter::OnUserName(Request request) {
  const std::string name = CutArgument(request.text, kAfterFourLetters).value_or("");
  sessions_[request.slot].login.Begin(name);
  return ReplyLine(replies::kNamed);
}

Task<std::string> CommandInterpreter::OnPassword(Request request) {
  std::string password = CutArgument(request.text, kAfterFourLetters).value_or("");
  Task<core::Accounts::Answer> trying =
      TrapErrors(errors_, host_.TrySignIn(request.slot, std::move(password)));
  const core::Accounts::Answer answer = co_await trying;
  co_return ReplyLine(ReplyTo(answer));
}

// Whoever is not signed in does not touch the transfers of others.
std::string CommandInterpreter::OnSignOut(Request request) {
  core::Login& login = sessions_[request.slot].login;
  if (!login.IsSignedIn()) return ReplyLine(replies::kQuit);
  login.End();
  return OnQuit(std::move(request));
}

// Directories

std::string CommandInterpreter::OnPwd(Request request) {
  FtpSession& session = sessions_[request.slot];
  const std::string& root = sessions_.StateOf(request.slot).ftpRoot;
  const bool done = Succeeds(errors_, [&] {
    if (session.physicalDir == root) session.ftpDir = "/";
    if (session.physicalDir.empty()) {
      session.physicalDir = root;
      session.ftpDir = "/";
    }
    return true;
  });
  if (!done) return ReplyLine(replies::kPwdFailed);
  return ReplyLine(std::string(replies::kPwdBegin) + session.ftpDir +
                   std::string(replies::kPwdEnd));
}

std::string CommandInterpreter::OnCwd(Request request) {
  if (Succeeds(errors_, [&] { return files_.ChangeFtpDirectory(request.slot, request.text); })) {
    return ReplyLine(replies::kCwd);
  }
  return ReplyLine(std::string(replies::kCwdFailedBegin) + sessions_[request.slot].ftpDir +
                   std::string(replies::kCwdFailedEnd));
}

// The reply names the current directory, not the new one: clients have learned it so.
std::string CommandInterpreter::OnMkd(Request request) {
  const Change change =
      ResultOf(errors_, [&] { return files_.MakeFtpDirectory(request.slot, request.text); });
  Show(request.slot, Kind::kMakeFolder, change);
  if (!change.IsDone()) return ReplyLine(replies::kMkdFailed);
  return ReplyLine(std::string(replies::kMkdBegin) + sessions_[request.slot].physicalDir +
                   std::string(replies::kMkdEnd));
}

std::string CommandInterpreter::OnRmd(Request request) {
  const Change change =
      ResultOf(errors_, [&] { return files_.RemoveFtpDirectory(request.slot, request.text); });
  Show(request.slot, Kind::kRemoveFolder, change);
  return ReplyLine(change.IsDone() ? replies::kRmd : replies::kRmdFailed);
}

// Files

Task<std::string> CommandInterpreter::OnDele(Request request) {
  Task<Change> deleting = TrapErrors(errors_, files_.DeleteFtpFile(request.slot, request.text));
  const Change change = co_await deleting;
  Show(request.slot, Kind::kDelete, change);
  if (change.IsDone()) co_return ReplyLine(replies::kDele);
  co_return ReplyLine(std::string(replies::kDeleFailed) + change.reason);
}

std::string CommandInterpreter::OnRnfr(Request request) {
  const bool done =
      Succeeds(errors_, [&] { return files_.RenameFrom(request.slot, request.text); });
  return ReplyLine(done ? replies::kRnfr : replies::kRnfrFailed);
}

std::string CommandInterpreter::OnRnto(Request request) {
  const Change change =
      ResultOf(errors_, [&] { return files_.RenameTo(request.slot, request.text); });
  Show(request.slot, Kind::kRename, change);
  return ReplyLine(change.IsDone() ? replies::kRnto : replies::kRntoFailed);
}

// The client gets its reply also if there is no memory for this.
void CommandInterpreter::Show(int slot, Kind kind, const Change& change) {
  if (change.path.empty() || !host_.IsObserved()) return;
  Succeeds(errors_, [&] {
    const std::string& root = sessions_.shared.ftpRoot;
    std::string what = SeenPath(root, change.path);
    const bool isFolder = kind == Kind::kMakeFolder || kind == Kind::kRemoveFolder;
    if (isFolder && what != "/") what.insert(0, "/");
    const std::string& from = sessions_[slot].renameFrom;
    if (kind == Kind::kRename && !from.empty()) what = SeenPath(root, from) + " → " + what;
    host_.ShowChange(slot, {.kind = kind, .what = std::move(what), .path = change.path},
                     change.end);
    return true;
  });
}

// Data connections

Task<std::string> CommandInterpreter::OnPort(Request request) {
  Task<bool> opening =
      TrapErrors(errors_, host_.OpenActiveDataConnection(request.slot, request.text));
  const bool opened = co_await opening;
  co_return ReplyLine(opened ? replies::kDone : replies::kPortFailed);
}

std::string CommandInterpreter::OnPasv(Request request) {
  return host_.EnterPassiveMode(request.slot);
}

Task<std::string> CommandInterpreter::OnList(Request request) {
  Task<bool> sending = TrapErrors(errors_, host_.SendFtpListing(request.slot));
  const bool sent = co_await sending;
  if (!sent) co_return ReplyLine(replies::kListFailed);
  Task<> closing = host_.AwaitDataClose(request.slot);
  co_await closing;
  co_return ReplyLine(replies::kList);
}

Task<std::string> CommandInterpreter::OnRetr(Request request) {
  sessions_.StateOf(request.slot).abortRequested = false;
  FtpSession& session = sessions_[request.slot];
  const std::string name = CutArgument(request.text, kAfterFourLetters).value_or("");
  session.transferPath =
      LocalPath(sessions_.StateOf(request.slot).ftpRoot, session.physicalDir, name);
  Task<bool> opening = TrapErrors(errors_, host_.OpenRetrieve(request.slot));
  const bool opened = co_await opening;
  if (!opened) {
    host_.CloseDataSocket(request.slot);
    co_return ReplyLine(replies::kRetrFailed);
  }
  // None if the file was empty: it has been sent, and the connection closed.
  const std::shared_ptr<Transfer> transfer = session.transfer;
  Task<> closing = host_.AwaitDataClose(request.slot);
  co_await closing;
  const bool failed =
      sessions_.StateOf(request.slot).abortRequested || (transfer && transfer->failed);
  co_return ReplyLine(failed ? replies::kRetrFailed : replies::kRetr);
}

Task<std::string> CommandInterpreter::OnStor(Request request) {
  sessions_.StateOf(request.slot).uploadByteCount = 0;
  Task<bool> opening = TrapErrors(errors_, host_.OpenStore(request.slot, request.text));
  const bool opened = co_await opening;
  if (!opened) {
    host_.CloseDataSocket(request.slot);
    co_return ReplyLine(replies::kStorFailed);
  }
  const std::shared_ptr<Transfer> transfer = sessions_[request.slot].transfer;
  Task<> closing = host_.AwaitDataClose(request.slot);
  co_await closing;
  co_return ReplyLine(transfer->failed ? replies::kStorFailed : replies::kStor);
}

}  // namespace ModFtp
