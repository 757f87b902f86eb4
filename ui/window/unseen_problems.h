#pragma once

// How many lines the error log has got since the user last looked at it. The size that it had then
// is kept in window.ini. An old log of which nothing is known counts as seen.

#include <cstdint>
#include <string>

namespace ui {

class UnseenProblems {
 public:
  /// `log`: a path text.
  explicit UnseenProblems(std::string log);
  ~UnseenProblems();
  UnseenProblems(const UnseenProblems&) = delete;
  UnseenProblems& operator=(const UnseenProblems&) = delete;

  /// The user sees the log up to that size.
  void See(std::uint64_t size) { seen_ = size; }

  /// The number of lines after that, such as "3" or "99+"; empty if there are none.
  std::string Count();

 private:
  std::uint64_t Size() const;
  void Keep();

  const std::string log_;
  std::uint64_t seen_;
  std::uint64_t kept_;         // in window.ini
  std::uint64_t counted_ = 0;  // the size for which the count is
  std::string count_;
};

}  // namespace ui
