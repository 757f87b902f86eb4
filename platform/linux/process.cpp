#include "platform/process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <asio/posix/stream_descriptor.hpp>
#include <memory>

extern char** environ;

extern "C" {
// Inside, since this header of Debian 12 does not say that its functions are C's.
#include <sys/pidfd.h>
}

namespace platform {
namespace {

// What posix_spawn is to do in the new process before the program takes over.
class SpawnSettings {
 public:
  SpawnSettings() {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions_, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions_, 2, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions_, 3);

    sigset_t all;
    sigset_t none;
    sigfillset(&all);
    sigemptyset(&none);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    posix_spawnattr_setsigmask(&attributes_, &none);
    // A group of its own: a Ctrl-C in our terminal is not meant for it.
    posix_spawnattr_setpgroup(&attributes_, 0);
    posix_spawnattr_setflags(
        &attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
  }
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  posix_spawn_file_actions_t* Actions() { return &actions_; }
  posix_spawnattr_t* Attributes() { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

std::vector<char*> ArgumentVector(std::vector<std::string>& words) {
  std::vector<char*> vector;
  vector.reserve(words.size() + 1);
  for (std::string& word : words) vector.push_back(word.data());
  vector.push_back(nullptr);
  return vector;
}

}  // namespace

void StartProgram(const asio::any_io_executor& executor, const std::filesystem::path& program,
                  const std::vector<std::filesystem::path>& arguments, std::string_view,
                  std::function<void()> onExit, std::error_code& error) {
  std::vector<std::string> words = {program.string()};
  for (const auto& argument : arguments) words.push_back(argument.string());

  SpawnSettings settings;
  pid_t child = 0;
  const int failure = posix_spawn(&child, program.c_str(), settings.Actions(),
                                  settings.Attributes(), ArgumentVector(words).data(), environ);
  error.assign(failure, std::generic_category());
  if (failure != 0) return;

  const int descriptor = pidfd_open(child, 0);
  if (descriptor < 0) {
    error.assign(errno, std::generic_category());
    return;
  }
  // The waiting operation keeps the descriptor alive, and the descriptor keeps the process number
  // from being given to another program before it is collected here.
  auto watch = std::make_shared<asio::posix::stream_descriptor>(executor, descriptor);
  watch->async_wait(asio::posix::stream_descriptor::wait_read,
                    [watch, child, done = std::move(onExit)](const asio::error_code& failed) {
                      if (failed) return;
                      waitpid(child, nullptr, WNOHANG);
                      done();
                    });
}

}  // namespace platform
