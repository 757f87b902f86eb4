#include "bench/running_program.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <thread>

#include "bench/sockets.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

bool Accepts(std::uint16_t port) {
  const sockaddr_in address = Loopback(port);
  const int client = socket(AF_INET, SOCK_STREAM, 0);
  const bool accepted =
      connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
  close(client);
  return accepted;
}

bool IsFree(std::uint16_t port) {
  const sockaddr_in address = Loopback(port);
  const int probe = socket(AF_INET, SOCK_STREAM, 0);
  const bool free = bind(probe, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
  close(probe);
  return free;
}

[[noreturn]] void Become(const std::vector<std::string>& words,
                         const std::map<std::string, std::string>& environment) {
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

std::uint64_t RunningProgram::StatusField(const std::string& name) const {
  std::ifstream status("/proc/" + std::to_string(process_) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind(name + ":", 0) == 0) return std::stoull(line.substr(name.size() + 1));
  }
  return 0;
}

std::uint64_t RunningProgram::AnonymousMemory() const { return StatusField("RssAnon"); }

std::uint64_t RunningProgram::ContextSwitches() const {
  return StatusField("voluntary_ctxt_switches");
}

std::uint64_t RunningProgram::ProcessorTicks() const {
  std::ifstream stat("/proc/" + std::to_string(process_) + "/stat");
  std::string line;
  std::getline(stat, line);
  std::istringstream fields(line.substr(line.rfind(')') + 2));
  const std::vector<std::string> all{std::istream_iterator<std::string>(fields), {}};
  constexpr std::size_t kUserTime = 11;
  return std::stoull(all.at(kUserTime)) + std::stoull(all.at(kUserTime + 1));
}

std::size_t RunningProgram::Descriptors() const {
  const fs::directory_iterator all("/proc/" + std::to_string(process_) + "/fd");
  return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

double WaitForPort(std::uint16_t port) {
  const auto start = std::chrono::steady_clock::now();
  while (true) {
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (Accepts(port)) return seconds;
    if (seconds > 10) return -1;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

std::uint16_t FreePort() {
  std::random_device random;
  std::uniform_int_distribution<int> candidates(20000, 32000);
  while (true) {
    const auto port = static_cast<std::uint16_t>(candidates(random));
    if (IsFree(port)) return port;
  }
}

Folder::Folder() {
  std::random_device random;
  path_ = fs::temp_directory_path() / ("tarnwerk-bench-" + std::to_string(random()));
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
