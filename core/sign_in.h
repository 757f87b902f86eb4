#pragma once

// Signing in with name and password: who a session is, and the attempts of all sessions. Attempts
// of one address follow one another, whatever the service, and each waits as long as its failures
// demand (core/sign_in_delays.h). What waits ends with its connection.

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "core/accounts.h"
#include "core/sign_in_delays.h"
#include "net/handler_scope.h"

namespace core {

/// A password from a client that is longer counts as wrong, and is cut.
inline constexpr std::size_t kLongestPassword = 1024;

/// Who a session is. A name alone is nobody yet.
class Login {
 public:
  /// Whoever was signed in no longer is.
  void Begin(std::string_view name);
  void End() { *this = {}; }

  /// The attempt with this name is over. It does not count if another has been begun meanwhile.
  void Finish(const std::string& name, bool isRight) { isSignedIn_ = isRight && name == name_; }

  const std::string& Name() const { return name_; }
  bool IsSignedIn() const { return isSignedIn_; }

 private:
  std::string name_;
  bool isSignedIn_ = false;
};

class SignIn {
 public:
  using Answer = Accounts::Answer;

  /// `accounts` must outlive this object. Until it is set every attempt is wrong.
  void SetAccounts(Accounts& accounts) { accounts_ = &accounts; }

  /// An attempt of `address`, which waits for the earlier ones. Of too many that wait, further ones
  /// are told that it is busy. An attempt whose connection ends meanwhile counts as a failure.
  net::Task<Answer> Try(std::string address, std::string name, std::string password);

 private:
  class Turn;
  struct Line {
    int attempts = 0;  // all, the one at work included
    bool isBusy = false;
    net::WaitList waiting;
  };

  static constexpr int kMostInLine = 8;

  Accounts* accounts_ = nullptr;
  SignInDelays delays_;
  std::map<std::string, Line> lines_;  // of the addresses with attempts
};

}  // namespace core
