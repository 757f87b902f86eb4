#include "platform/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace platform {

void SecureStandardStreams() {
  std::signal(SIGPIPE, SIG_IGN);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // open returns the lowest free number, which is this one, since those below are open by now.
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", O_RDWR);
  }
}

void SayOnStandardError(std::string_view line) {
  std::fputs((std::string(line) + "\n").c_str(), stderr);
}

}  // namespace platform
