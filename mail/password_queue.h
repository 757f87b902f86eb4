#pragma once

// The mail users as the accounts with which clients sign in, by POP3 as well as by FTP, and whether
// or not the mail server runs. Attempts are checked one at a time on a thread beside the loop,
// since each takes tens of milliseconds. One whose client leaves before its turn leaves the queue;
// the queue is bounded.

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "core/accounts.h"
#include "core/service_environment.h"
#include "net/background_worker.h"
#include "net/side_thread.h"

namespace ModMail {

class PasswordQueue : public core::Accounts {
 public:
  /// `mailRoot` tells the current one.
  PasswordQueue(const core::ServiceEnvironment& environment, std::function<std::string()> mailRoot);

  net::Task<Answer> Check(std::string name, std::string password) override;

 private:
  struct Ticket;
  class Place;

  net::Task<> Work();
  net::Task<> CheckOne(std::shared_ptr<Ticket> ticket);

  static constexpr std::size_t kMostWaiting = 64;

  const settings::Program& program_;
  std::function<std::string()> mailRoot_;
  std::deque<std::shared_ptr<Ticket>> waiting_;
  net::SideThread thread_;
  net::BackgroundWorker worker_;
};

}  // namespace ModMail
