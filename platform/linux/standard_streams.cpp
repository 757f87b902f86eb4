#include "platform/standard_streams.h"

#include <csignal>
#include <cstdio>
#include <string>

namespace platform {

void SayOnStandardError(std::string_view line) {
  std::fputs((std::string(line) + "\n").c_str(), stderr);
}

void OutliveReaders() { std::signal(SIGPIPE, SIG_IGN); }

}  // namespace platform
