#include "bench/server.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <utility>

#include "bench/failure.h"

namespace bench {

void Server::Run(std::vector<std::string> words, std::map<std::string, std::string> environment) {
  words_ = std::move(words);
  environment_ = std::move(environment);
  Start();
}

void Server::Start() {
  process_ = std::make_unique<RunningProgram>(words_, environment_);
  startSeconds_ = WaitForPort(port_);
  Expect(startSeconds_ >= 0, name_ + " does not serve");
}

bool HasProgram(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access((folder + "/" + name).c_str(), X_OK) == 0) return true;
  }
  return false;
}

bool HasPythonModule(const std::string& name) {
  return std::filesystem::exists("/usr/lib/python3/dist-packages/" + name);
}

std::string Script(const std::string& name) {
  return std::string(TARNWERK_BENCH_SOURCES) + "/" + name;
}

}  // namespace bench
