#pragma once

// A server that is measured, ours or a peer: what it is called, where it listens, what its
// processes use. It runs from its construction to its destruction, unless it is stopped in between.

#include <cstdint>
#include <cstdio>
#include <exception>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/process_tree.h"
#include "bench/running_program.h"

namespace bench {

class Server {
 public:
  virtual ~Server() = default;
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  const std::string& Name() const { return name_; }
  std::uint16_t Port() const { return port_; }
  const RunningProgram& Process() const { return *process_; }
  Usage Used() const { return UsageOfTree(process_->Id()); }

  /// Starts it again. Throws if it does not accept connections.
  void Start();
  /// Seconds from SIGTERM to the end of the process.
  double Stop() { return process_->End(); }

  /// Seconds from the start of the process until it accepted connections.
  double StartSeconds() const { return startSeconds_; }

 protected:
  explicit Server(std::string name) : name_(std::move(name)) {}

  /// For the constructor of a derived class, once its settings are written.
  void Run(std::vector<std::string> words, std::map<std::string, std::string> environment = {});

 private:
  std::string name_;
  std::uint16_t port_ = FreePort();
  std::vector<std::string> words_;
  std::map<std::string, std::string> environment_;
  std::unique_ptr<RunningProgram> process_;
  double startSeconds_ = 0;
};

/// Null, and a line that says so, for a peer that is not installed or does not start.
template <class Peer>
std::unique_ptr<Peer> StartPeer(const Folder& folder) {
  if (!Peer::IsInstalled()) {
    std::printf("%s is not installed: left out\n", Peer::kName);
    return nullptr;
  }
  try {
    return std::make_unique<Peer>(folder);
  } catch (const std::exception& failure) {
    std::printf("%s: left out\n", failure.what());
    return nullptr;
  }
}

/// Whether there is a program of that name on the path.
bool HasProgram(const std::string& name);

/// The system's own interpreter, for which Debian's packages install their modules.
inline constexpr const char* kPython = "/usr/bin/python3";
bool HasPythonModule(const std::string& name);
/// The path of a script beside the sources of the benchmarks.
std::string Script(const std::string& name);

}  // namespace bench
