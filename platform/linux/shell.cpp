#include "platform/shell.h"

#include <sys/wait.h>

#include <thread>

#include "platform/linux/spawn_settings.h"

extern char** environ;

namespace platform {

bool OpenWithShell(const std::string& target) {
  SpawnSettings settings;
  std::string program = "xdg-open";
  std::string argument = target;
  char* words[] = {program.data(), argument.data(), nullptr};
  pid_t child = 0;
  const bool started = posix_spawnp(&child, "xdg-open", settings.Actions(), settings.Attributes(),
                                    words, environ) == 0;
  // Only reaps the child and touches none of the program's state.
  if (started) std::thread([child] { waitpid(child, nullptr, 0); }).detach();
  return started;
}

}  // namespace platform
