#include "platform/process.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <asio/posix/stream_descriptor.hpp>
#include <memory>

#include "platform/linux/spawn_settings.h"

extern char** environ;

extern "C" {
// Inside, since this header of Debian 12 does not say that its functions are C's.
#include <sys/pidfd.h>
}

namespace platform {
namespace {

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
