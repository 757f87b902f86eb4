#pragma once

// How long an address has to wait for its next attempt to sign in. Each failure doubles the wait,
// from half a second to 16; a success and some minutes without a failure end it. More connections
// or another protocol do not shorten it. Whoever has an account can use it to begin again at half a
// second, but no faster.
//
// The number of addresses is bounded; of too many the one that failed longest ago is forgotten. The
// caller says what time it is.

#include <chrono>
#include <cstddef>
#include <map>
#include <string>

namespace core {

class SignInDelays {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr std::size_t kMostAddresses = 1024;
  static constexpr std::chrono::milliseconds kFirstWait{500};
  static constexpr std::chrono::seconds kLongestWait{16};
  static constexpr std::chrono::minutes kMemory{5};

  /// How long from `now`; not positive if the address may try at once.
  Clock::duration WaitOf(const std::string& address, Clock::time_point now) const;

  void NoteFailure(const std::string& address, Clock::time_point now);
  void NoteSuccess(const std::string& address) { records_.erase(address); }

 private:
  struct Record {
    Clock::duration wait{};
    Clock::time_point failed;
  };

  void MakeRoom();

  std::map<std::string, Record> records_;
};

}  // namespace core
