#pragma once

// What of the clients' activities a user may want to hear of at once: files that came, and mail.

#include <chrono>
#include <string>

#include "core/activity_record.h"

namespace core {

class ActivityNews {
 public:
  /// What came since the last call, in a line or two; empty if nothing did. The first call only
  /// begins.
  std::string Next(const ActivityRecord& record);

 private:
  std::chrono::system_clock::time_point last_ = {};  // the end of the latest activity seen
  bool begun_ = false;
};

}  // namespace core
