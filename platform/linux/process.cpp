#include "platform/process.h"

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <asio/posix/stream_descriptor.hpp>
#include <memory>

#include "platform/linux/spawn_settings.h"

extern char** environ;

extern "C" {
// Included as C here: this header of Debian 12 lacks extern "C".
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

// The pending wait keeps the descriptor open, and the unreaped child keeps its process number from
// being reused.
struct Child {
  Child(const asio::any_io_executor& executor, int descriptor, pid_t process)
      : watch(executor, descriptor), number(process) {}

  // Reaps the process. False if it is still running.
  bool Collect(int options) {
    if (!collected) collected = waitpid(number, nullptr, options) != 0;
    return collected;
  }

  asio::posix::stream_descriptor watch;
  pid_t number;
  bool collected = false;
};

class StartedChild : public StartedProgram {
 public:
  explicit StartedChild(std::shared_ptr<Child> child) : child_(std::move(child)) {}

  void EndWithin(std::chrono::milliseconds patience) override {
    if (child_->collected) return;
    pollfd end = {child_->watch.native_handle(), POLLIN, 0};
    const bool ended = poll(&end, 1, static_cast<int>(patience.count())) > 0;
    // The child leads its own process group.
    if (!ended) kill(-child_->number, SIGKILL);
    child_->Collect(0);
  }

 private:
  std::shared_ptr<Child> child_;
};

// A wait may return spuriously: an event of an earlier descriptor with the same number may be taken
// for one of this.
void AwaitEnd(const std::shared_ptr<Child>& child, std::function<void()> onExit) {
  child->watch.async_wait(asio::posix::stream_descriptor::wait_read,
                          [child, done = std::move(onExit)](const asio::error_code& failed) {
                            if (failed) return;
                            if (child->Collect(WNOHANG)) return done();
                            AwaitEnd(child, done);
                          });
}

}  // namespace

std::unique_ptr<StartedProgram> StartProgram(const asio::any_io_executor& executor,
                                             const std::filesystem::path& program,
                                             const std::vector<std::filesystem::path>& arguments,
                                             std::string_view, std::function<void()> onExit,
                                             std::error_code& error) {
  if (!CanBeWord(program) || !std::all_of(arguments.begin(), arguments.end(), CanBeWord)) {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
    return nullptr;
  }
  std::vector<std::string> words = {program.string()};
  for (const auto& argument : arguments) words.push_back(argument.string());

  SpawnSettings settings;
  pid_t process = 0;
  const int failure = posix_spawn(&process, program.c_str(), settings.Actions(),
                                  settings.Attributes(), ArgumentVector(words).data(), environ);
  error.assign(failure, std::generic_category());
  if (failure != 0) return nullptr;

  const int descriptor = pidfd_open(process, 0);
  if (descriptor < 0) {
    error.assign(errno, std::generic_category());
    kill(-process, SIGKILL);
    waitpid(process, nullptr, 0);
    return nullptr;
  }
  auto child = std::make_shared<Child>(executor, descriptor, process);
  AwaitEnd(child, std::move(onExit));
  return std::make_unique<StartedChild>(std::move(child));
}

}  // namespace platform
