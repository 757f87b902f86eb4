#pragma once

// The view of a program without a display. For every start and stop it writes to a stream, at once
// and a line each: the result with the address, and the service's status text; and where a start
// failed because Server.ini cannot be used, the reason.

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
