#include "bench/running_program.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <thread>

#include "bench/process_tree.h"
#include "bench/sockets.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

bool IsFree(std::uint16_t port) {
  const sockaddr_in address = Loopback(port);
  const Descriptor probe(socket(AF_INET, SOCK_STREAM, 0));
  return bind(probe.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
}

fs::path MemoryFolder() {
  const char* folder = std::getenv("TARNWERK_BENCH_MEMORY");
  return folder != nullptr ? fs::path(folder) : fs::temp_directory_path();
}

[[noreturn]] void Become(const std::vector<std::string>& words,
                         const std::map<std::string, std::string>& environment) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);  // no server outlives the measurement, however that ends
  for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
  const int nothing = open("/dev/null", O_RDWR);
  for (int stream = 0; stream <= 2; ++stream) dup2(nothing, stream);
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

}  // namespace

RunningProgram::RunningProgram(const std::vector<std::string>& words,
                               const std::map<std::string, std::string>& environment) {
  process_ = fork();
  if (process_ == 0) Become(words, environment);
}

RunningProgram::~RunningProgram() { End(); }

double RunningProgram::End() {
  if (process_ == 0) return 0;
  const Clock::time_point start = Clock::now();
  kill(process_, SIGTERM);
  while (waitpid(process_, nullptr, WNOHANG) == 0) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (SecondsSince(start) > 30) kill(process_, SIGKILL);
  }
  process_ = 0;
  return SecondsSince(start);
}

std::uint64_t RunningProgram::AnonymousMemory() const { return StatusNumber(process_, "RssAnon"); }

std::uint64_t RunningProgram::ContextSwitches() const {
  return StatusNumber(process_, "voluntary_ctxt_switches");
}

std::uint64_t RunningProgram::ProcessorTicks() const { return bench::ProcessorTicks(process_); }

std::size_t RunningProgram::Descriptors() const {
  const fs::directory_iterator all("/proc/" + std::to_string(process_) + "/fd");
  return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

double WaitForPort(std::uint16_t port) {
  const Clock::time_point start = Clock::now();
  while (SecondsSince(start) < 10) {
    if (TryConnectTo(port).Number() >= 0) return SecondsSince(start);
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
  return -1;
}

std::uint16_t FreePort() {
  std::random_device random;
  std::uniform_int_distribution<int> candidates(20000, 32000);
  while (true) {
    const auto port = static_cast<std::uint16_t>(candidates(random));
    if (IsFree(port)) return port;
  }
}

Folder::Folder(Place place) {
  std::random_device random;
  path_ = (place == Place::kMemory ? MemoryFolder() : fs::temp_directory_path()) /
          ("tarnwerk-bench-" + std::to_string(random()));
  fs::create_directories(path_);
}

Folder::~Folder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

void Folder::Write(const std::string& name, const std::string& content) const {
  fs::create_directories((path_ / name).parent_path());
  std::ofstream(path_ / name, std::ios::binary) << content;
}

}  // namespace bench
