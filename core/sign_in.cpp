#include "core/sign_in.h"

#include <utility>

namespace core {

// No account has a longer name; a name that is cut stays too long.
void Login::Begin(std::string_view name) {
  constexpr std::size_t kMost = 1000;
  End();
  name_ = name.substr(0, kMost);
}

// An attempt in the line of its address, until it is over or its connection has ended.
class SignIn::Turn {
 public:
  Turn(std::map<std::string, Line>& lines, const std::string& address)
      : lines_(lines), line_(lines.try_emplace(address).first) {
    ++line_->second.attempts;
  }
  ~Turn() {
    Line& line = line_->second;
    if (isMine_) line.isBusy = false;
    line.waiting.WakeAll();
    if (--line.attempts == 0) lines_.erase(line_);
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

  bool IsLineTooLong() const { return line_->second.attempts > kMostInLine; }
  net::WaitList& Waiting() const { return line_->second.waiting; }

  /// Whether it is this attempt's turn, which it is from then on.
  bool Take() {
    if (line_->second.isBusy) return false;
    return line_->second.isBusy = isMine_ = true;
  }

 private:
  std::map<std::string, Line>& lines_;
  std::map<std::string, Line>::iterator line_;
  bool isMine_ = false;
};

net::Task<SignIn::Answer> SignIn::Try(std::string address, std::string name, std::string password) {
  Turn turn(lines_, address);
  if (accounts_ == nullptr || name.empty() || password.size() > kLongestPassword) {
    co_return Answer::kWrong;
  }
  if (turn.IsLineTooLong()) co_return Answer::kBusy;
  while (!turn.Take()) {
    net::WaitList::Awaiter former = turn.Waiting().Wait();
    co_await former;
  }
  const auto wait = delays_.WaitOf(address, SignInDelays::Clock::now());
  if (wait > wait.zero()) {
    net::Pause pause(wait);
    co_await pause;
  }
  // Noted before the answer is known, so that hanging up does not help.
  delays_.NoteFailure(address, SignInDelays::Clock::now());
  net::Task<Answer> checking = accounts_->Check(std::move(name), std::move(password));
  const Answer answer = co_await checking;
  if (answer == Answer::kRight) delays_.NoteSuccess(address);
  co_return answer;
}

}  // namespace core
