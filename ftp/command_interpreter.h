#pragma once

// The FTP commands: the text of one command in, its reply out. No command needs a login unless the
// user wants it, and many answer with a bare code; that is the protocol as it is meant.
//
// The interpreter works without a socket. It changes the sessions and, through FileOperations, the
// disk; everything else it needs comes from its Host. LIST, RETR and STOR wait for their data
// connection, and other commands of the same session may run meanwhile.

#include <string>

#include "core/command_table.h"
#include "files/logs.h"
#include "ftp/file_operations.h"
#include "ftp/ftp_session.h"
#include "net/task.h"

namespace ModFtp {

class CommandInterpreter {
 public:
  /// The connections of the sessions. Every task that returns bool reports success.
  class Host {
   public:
    /// What the user sees the session doing.
    virtual void ShowCommand(int slot, std::string_view what) = 0;
    /// Whether the user gets to know what was done.
    virtual bool IsObserved() const = 0;
    /// What became of a change to a file or folder.
    virtual void ShowChange(int slot, net::Activity change, net::ActivityEnd end) = 0;

    /// Signs the session in, if the password is that of the user whom it has named.
    virtual net::Task<core::Accounts::Answer> TrySignIn(int slot, std::string password) = 0;

    virtual net::Task<bool> OpenActiveDataConnection(int slot, std::string text) = 0;
    /// The whole reply, line end included.
    virtual std::string EnterPassiveMode(int slot) = 0;
    /// Its transfer has failed.
    virtual void CloseDataSocket(int slot) = 0;
    /// Those of all sessions, on the request of `slot`.
    virtual void CloseAllDataSockets(int slot) = 0;

    /// These wait for the data connection, send the preliminary reply and start the transfer, whose
    /// end AwaitDataClose waits for.
    virtual net::Task<bool> SendFtpListing(int slot) = 0;
    virtual net::Task<bool> OpenRetrieve(int slot) = 0;
    virtual net::Task<bool> OpenStore(int slot, std::string text) = 0;
    virtual net::Task<> AwaitDataClose(int slot) = 0;

   protected:
    ~Host() = default;
  };

  /// All arguments must outlive the interpreter.
  CommandInterpreter(Host& host, const core::Protection& protection, FtpSessions& sessions,
                     FileOperations& files, const files::ErrorLog& errors)
      : host_(host), protection_(protection), sessions_(sessions), files_(files), errors_(errors) {}

  /// Runs one command. The task's result is the reply with its line end, empty for none.
  net::Task<std::string> HandleFtpCommand(int slot, std::string text);

  /// The reply to a command that is too long to be kept, of which this is the beginning.
  net::Task<std::string> RefuseCommand(int slot, std::string_view beginning);

 private:
  struct Request {
    int slot;
    std::string text;  // the whole command
  };
  using Command = core::Command<CommandInterpreter, Request, std::string>;

  const Command* Find(std::string_view word) const;
  net::Task<std::string> Answer(const Command& command, Request request);

  std::string OnEmptyWord(Request request);
  std::string OnUser(Request request);
  std::string OnUserName(Request request);
  net::Task<std::string> OnPassword(Request request);
  std::string OnSignOut(Request request);
  std::string OnSite(Request request);
  std::string OnPwd(Request request);
  std::string OnType(Request request);
  std::string OnCwd(Request request);
  std::string OnNoop(Request request);
  net::Task<std::string> OnPort(Request request);
  net::Task<std::string> OnList(Request request);
  std::string OnPasv(Request request);
  std::string OnRest(Request request);
  net::Task<std::string> OnRetr(Request request);
  std::string OnQuit(Request request);
  std::string OnMkd(Request request);
  std::string OnRnfr(Request request);
  std::string OnRnto(Request request);
  net::Task<std::string> OnStor(Request request);
  net::Task<std::string> OnDele(Request request);
  std::string OnRmd(Request request);
  void Show(int slot, net::Activity::Kind kind, const Change& change);

  Host& host_;
  const core::Protection& protection_;
  FtpSessions& sessions_;
  FileOperations& files_;
  const files::ErrorLog& errors_;
};

}  // namespace ModFtp
