// The commands that open data connections, and those that wait for them.

#include "ftp/command_text.h"
#include "ftp/ftp_server.h"
#include "ftp/path_mapping.h"
#include "ftp/replies.h"
#include "ftp/trapped.h"

namespace ModFtp {

using net::Task;

Task<std::string> FtpServer::OnPort(Command command) {
  Task<bool> opening = Trapped(Errors(), OpenActiveDataConnection(command.slot, command.text));
  const bool opened = co_await opening;
  Session(command.slot).closeAfterSend = false;
  co_return ReplyLine(opened ? replies::kDone : replies::kPortFailed);
}

Task<std::string> FtpServer::OnPasv(Command command) {
  std::string reply = EnterPassiveMode(command.slot);
  Session(command.slot).closeAfterSend = false;
  co_return std::move(reply);
}

Task<std::string> FtpServer::OnList(Command command) {
  Task<bool> sending = Trapped(Errors(), SendFtpListing(command.slot));
  const bool sent = co_await sending;
  if (!sent) co_return ReplyLine(replies::kListFailed);
  Task<> closing = AwaitDataClose(command.slot);
  co_await closing;
  co_return ReplyLine(replies::kList);
}

Task<std::string> FtpServer::OnRetr(Command command) {
  state_.abortRequested = false;
  FtpSession& session = Session(command.slot);
  const std::string name = CutArgument(command.text, kAfterFourLetters).value_or("");
  session.transferPath = LocalPath(state_.ftpRoot, session.physicalDir, name);
  Task<bool> opening = Trapped(Errors(), OpenRetrieve(command.slot));
  const bool opened = co_await opening;
  if (!opened) {
    CloseDataSocket(command.slot);
    co_return ReplyLine(replies::kRetrFailed);
  }
  const std::shared_ptr<Transfer> transfer = session.transfer;
  Task<> closing = AwaitDataClose(command.slot);
  co_await closing;
  const bool failed = state_.abortRequested || (transfer && transfer->failed);
  co_return ReplyLine(failed ? replies::kRetrFailed : replies::kRetr);
}

Task<std::string> FtpServer::OnStor(Command command) {
  state_.uploadByteCount = 0;
  Task<bool> opening = Trapped(Errors(), OpenStore(command.slot, command.text));
  const bool opened = co_await opening;
  if (!opened) {
    CloseDataSocket(command.slot);
    co_return ReplyLine(replies::kStorFailed);
  }
  const std::shared_ptr<Transfer> transfer = Session(command.slot).transfer;
  Task<> closing = AwaitDataClose(command.slot);
  co_await closing;
  co_return ReplyLine(transfer->failed ? replies::kStorFailed : replies::kStor);
}

}  // namespace ModFtp
