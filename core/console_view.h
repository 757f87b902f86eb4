#pragma once

// The view of a program without a display. After every start and stop it writes lines to a stream
// and flushes them: the result with the address, the service's status, and if it did not start, the
// reason.

#include <cstdio>
#include <string>

#include "core/manager_view.h"

namespace core {

class ConsoleView : public ManagerView {
 public:
  explicit ConsoleView(std::FILE* stream) : stream_(stream) {}

  void ShowOutcome(const Outcome& outcome) override;

 private:
  void Print(const std::string& line);

  std::FILE* stream_;
};

}  // namespace core
