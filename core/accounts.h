#pragma once

// Who has an account, as far as the servers ask. What an account is, is the business of whoever
// keeps them.

#include <string>

#include "net/task.h"

namespace core {

class Accounts {
 public:
  enum class Answer {
    kWrong,  // also if there is no such account
    kRight,
    kBusy,  // not looked at: too many others wait
  };

  virtual ~Accounts() = default;

  /// Whether there is an account of this name with this password. Takes tens of milliseconds, equal
  /// for every name and password, in which the loop goes on.
  virtual net::Task<Answer> Check(std::string name, std::string password) = 0;
};

}  // namespace core
