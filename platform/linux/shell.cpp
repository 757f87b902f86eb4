#include "platform/shell.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <thread>

extern char** environ;

namespace platform {

bool OpenWithShell(const std::string& target) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addclosefrom_np(&actions, 3);
  std::string program = "xdg-open";
  std::string argument = target;
  char* words[] = {program.data(), argument.data(), nullptr};
  pid_t child = 0;
  const bool started = posix_spawnp(&child, "xdg-open", &actions, nullptr, words, environ) == 0;
  posix_spawn_file_actions_destroy(&actions);
  // Only collects the process; it touches nothing of the program's.
  if (started) std::thread([child] { waitpid(child, nullptr, 0); }).detach();
  return started;
}

}  // namespace platform
