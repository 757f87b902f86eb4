#include "platform/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>

#include "platform/code_page.h"

namespace platform {
namespace {

void Say(std::FILE* stream, std::string_view line) {
  const Charset charset = SystemCharset();
  const std::string text = std::string(line) + "\n";
  std::fputs((charset == Charset::kUtf8 ? text : FromUtf8(charset, text)).c_str(), stream);
  std::fflush(stream);
}

}  // namespace

void SecureStandardStreams() {
  std::signal(SIGPIPE, SIG_IGN);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // open returns the lowest free number, which is this one, since those below are open by now.
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", O_RDWR);
  }
}

void SayOnStandardOutput(std::string_view line) { Say(stdout, line); }

void SayOnStandardError(std::string_view line) { Say(stderr, line); }

}  // namespace platform
