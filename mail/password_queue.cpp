#include "mail/password_queue.h"

#include <exception>
#include <utility>

#include "mail/mail_accounts.h"
#include "mail/password_hash.h"

namespace ModMail {

// The attempt of one client. The thread has it as well, since it may outlive the client.
struct PasswordQueue::Ticket {
  Ticket(std::string userName, std::string typed)
      : name(std::move(userName)), password(std::move(typed)) {}

  const std::string name;
  const std::string password;
  StoredPassword stored;
  bool isRight = false;  // the thread's until it is done
  bool isDone = false;
  net::WaitList waiters;
};

// A ticket's place in the queue, until its turn comes or its client leaves.
class PasswordQueue::Place {
 public:
  Place(PasswordQueue& queue, std::shared_ptr<Ticket> ticket)
      : queue_(queue), ticket_(std::move(ticket)) {
    queue_.waiting_.push_back(ticket_);
  }
  ~Place() { std::erase(queue_.waiting_, ticket_); }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

 private:
  PasswordQueue& queue_;
  std::shared_ptr<Ticket> ticket_;
};

PasswordQueue::PasswordQueue(const core::ServiceEnvironment& environment,
                             std::function<std::string()> mailRoot)
    : program_(environment.program),
      mailRoot_(std::move(mailRoot)),
      worker_(
          environment.loop, [this](const std::string& error) { program_.errors.LogError(error); },
          [this] { return Work(); }) {}

net::Task<core::Accounts::Answer> PasswordQueue::Check(std::string name, std::string password) {
  if (waiting_.size() >= kMostWaiting) co_return Answer::kBusy;
  const auto ticket = std::make_shared<Ticket>(std::move(name), std::move(password));
  const Place place(*this, ticket);
  worker_.Start();
  while (!ticket->isDone) {
    net::WaitList::Awaiter done = ticket->waiters.Wait();
    co_await done;
  }
  co_return ticket->isRight ? Answer::kRight : Answer::kWrong;
}

net::Task<> PasswordQueue::Work() {
  while (!waiting_.empty()) {
    const std::shared_ptr<Ticket> ticket = waiting_.front();
    waiting_.pop_front();
    net::Task<> checking = CheckOne(ticket);
    co_await checking;
    ticket->isDone = true;
    ticket->waiters.WakeAll();
  }
}

// A fault refuses one attempt and must not stop the others.
net::Task<> PasswordQueue::CheckOne(std::shared_ptr<Ticket> ticket) {
  try {
    ticket->stored = ReadStoredPassword(mailRoot_(), ticket->name);
    net::Task<> checking = thread_.Run(
        [ticket] { ticket->isRight = IsStoredPassword(ticket->stored, ticket->password); });
    co_await checking;
  } catch (const net::HandlerEnded&) {
    throw;
  } catch (const std::exception& error) {
    program_.errors.LogError(error.what());
  }
}

}  // namespace ModMail
