#pragma once

// How far strangers are trusted. Nothing is protected unless the user wants it: without the section
// "Protection" of Server.ini every answer is yes. The servers ask here at a few places: who may
// connect, which files a client's name may reach, what is possible before a login, what is
// acknowledged.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/protection_options.h"
#include "core/sign_in.h"
#include "files/client_files.h"
#include "net/connection.h"
#include "platform/local_networks.h"
#include "settings/holders.h"
#include "settings/program.h"

namespace core {

/// Whether an IPv4 address is as near as `reach` wants it: this machine's own, or in one of its
/// networks.
bool IsWithinReach(std::uint32_t address, ProtectionOptions::Reach reach,
                   const std::vector<platform::LocalNetwork>& networks);

class Protection {
 public:
  explicit Protection(const settings::Program& program);

  /// Takes over what Server.ini says; it holds at once.
  void Load();
  const ProtectionOptions& Options() const { return options_; }

  // Who may connect

  /// `client`: an IPv4 address as a number in host byte order. Counts those who may not.
  bool MayConnect(std::uint32_t client);
  std::uint64_t RefusedClients() const { return refused_; }

  // Files

  const files::Confinement& OfFiles() const { return confinement_; }

  /// Whether a data connection with `data` belongs to a client at `client`; both are addresses.
  bool MayCarryData(std::string_view client, std::string_view data) const {
    return !options_.confine || client == data;
  }

  // Signing in

  /// Whether clients have to sign in.
  bool WantsSignIn() const { return options_.signIn; }

  /// Whether a session may give a command that may need a login.
  bool MayGive(bool needsLogin, const Login& login) const {
    return !needsLogin || !options_.signIn || login.IsSignedIn();
  }

  /// Who has an account; must outlive this object's use.
  void SetAccounts(Accounts& accounts) { signIn_.SetAccounts(accounts); }

  /// Tries the password for the name in `login`, which belongs to the session of `client` and lives
  /// at least as long, and tells the observer. kRight: the session is signed in.
  net::Task<Accounts::Answer> TrySignIn(std::shared_ptr<net::Connection> client, Login& login,
                                        std::string password);

  // Sessions

  /// Whether what one client does must not touch the session of another.
  bool SeparatesSessions() const { return options_.honest; }

  /// For how long a session of FTP, SMTP or POP3 may do nothing; 0 for ever.
  std::chrono::milliseconds IdleLimit() const {
    return options_.honest ? std::chrono::minutes(10) : std::chrono::minutes(0);
  }

  // Mail

  /// Whether each POP3 session has a mailbox of its own.
  bool KeepsMailboxesApart() const { return options_.signIn || options_.honest; }

  /// Whether a message that is collected ends once, as mail programs expect, and a missing one is
  /// an error.
  bool EndsMessagesOnce() const { return options_.honest; }

  /// Whether a message that is not kept must not be acknowledged.
  bool KeepsWhatItAcknowledges() const { return options_.honest; }

  /// The folder of the Web server's programs, a path text.
  void SetProgramFolder(std::string folder) { programFolder_ = std::move(folder); }

  /// Whether a client may change what is at a real path: nothing of a client's gets where programs
  /// are run from.
  bool MayChange(const std::filesystem::path& place) const;

 private:
  bool IsNear(std::uint32_t address);
  void ReadNetworks();

  const settings::Program& program_;
  ProtectionOptions options_;
  files::Confinement confinement_;
  std::string programFolder_;
  std::uint64_t refused_ = 0;
  SignIn signIn_;
  std::vector<platform::LocalNetwork> networks_;
  std::chrono::steady_clock::time_point networksRead_;
  settings::SettingsHolders::Holder holder_;
};

}  // namespace core
