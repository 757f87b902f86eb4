#include "platform/running_instance.h"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <asio/local/stream_protocol.hpp>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/descriptor.h"

extern "C" {
// Included as C here: this header of Debian 12 lacks extern "C".
#include <sys/pidfd.h>
}

// Each instance has three files in the runtime directory, named by a hash of its executable and
// program directory: a lock that the system releases when the process ends, and two sockets.
// Connecting to NAME.socket asks the instance to close; the client then waits for the process to
// end. Connecting to NAME.start asks it to start its services.

namespace platform {
namespace {

namespace fs = std::filesystem;
using Protocol = asio::local::stream_protocol;

// The possible runtime directories, best first. The one in the environment is created if missing:
// after su, or in a container, the variable may name a directory that only a login would create.
std::vector<fs::path> RuntimeDirectories() {
  std::vector<fs::path> places;
  const char* configured = std::getenv("XDG_RUNTIME_DIR");
  std::error_code error;
  if (configured != nullptr && *configured == '/') {
    fs::create_directories(configured, error);
    places.push_back(fs::path(configured) / "Tarnwerk");
  }
  const std::string user = std::to_string(getuid());
  places.emplace_back("/run/user/" + user + "/Tarnwerk");
  places.push_back(fs::temp_directory_path(error) / ("Tarnwerk-" + user));
  return places;
}

// A directory in a shared place is used only if it belongs to this user and nobody else can write
// it.
Descriptor OpenOwnDirectory(const fs::path& path) {
  mkdir(path.c_str(), 0700);
  Descriptor directory(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat facts = {};
  const bool ours = directory.IsOpen() && fstat(directory.Get(), &facts) == 0 &&
                    facts.st_uid == geteuid() && (facts.st_mode & 022) == 0;
  return ours ? std::move(directory) : Descriptor();
}

Descriptor OpenRuntimeDirectory() {
  for (const fs::path& place : RuntimeDirectories()) {
    Descriptor directory = OpenOwnDirectory(place);
    if (directory.IsOpen()) return directory;
  }
  return {};
}

// A socket address is limited to 108 bytes; going through the open directory avoids the limit.
Protocol::endpoint Address(const Descriptor& directory, const std::string& name) {
  return {"/proc/self/fd/" + std::to_string(directory.Get()) + "/" + name};
}

std::string InstanceName(const fs::path& executable, const fs::path& programDirectory) {
  // Different links to the same directory must give the same name.
  std::error_code error;
  const fs::path directory = fs::weakly_canonical(programDirectory, error);
  std::uint64_t hash = 14695981039346656037U;
  for (const char c : executable.string() + '\n' + directory.string()) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  }
  return std::to_string(hash);
}

class UnreachableInstance : public RunningInstance {
 public:
  void OnCloseRequest(const asio::any_io_executor&, std::function<void()>) override {}
  void OnStartRequest(const asio::any_io_executor&, std::function<void()>) override {}
};

// It gets its name only once it listens: one that refuses is taken for a leftover.
Descriptor ListenOn(const Descriptor& directory, const std::string& name) {
  const std::string unfinished = name + ".new";
  unlinkat(directory.Get(), unfinished.c_str(), 0);
  Descriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const Protocol::endpoint address = Address(directory, unfinished);
  const bool listening =
      listener.IsOpen() &&
      bind(listener.Get(), address.data(), static_cast<socklen_t>(address.size())) == 0 &&
      listen(listener.Get(), SOMAXCONN) == 0 &&
      renameat(directory.Get(), unfinished.c_str(), directory.Get(), name.c_str()) == 0;
  return listening ? std::move(listener) : Descriptor();
}

// A socket in the runtime directory, which must outlive it. Others ask for something by connecting.
class Door {
 public:
  Door(const Descriptor& directory, std::string name)
      : directory_(directory.Get()),
        name_(std::move(name)),
        listener_(ListenOn(directory, name_)) {}
  ~Door() {
    if (IsOpen()) unlinkat(directory_, name_.c_str(), 0);
  }
  Door(const Door&) = delete;
  Door& operator=(const Door&) = delete;

  bool IsOpen() const { return acceptor_ != nullptr || listener_.IsOpen(); }

  void OnVisitor(const asio::any_io_executor& executor,
                 std::function<void(Protocol::socket)> onVisitor) {
    onVisitor_ = std::move(onVisitor);
    acceptor_ = std::make_unique<Protocol::acceptor>(executor, Protocol(), listener_.Release());
    AcceptNext();
  }

 private:
  void AcceptNext() {
    acceptor_->async_accept([this](const asio::error_code& error, Protocol::socket visitor) {
      if (error) return;
      onVisitor_(std::move(visitor));
      AcceptNext();
    });
  }

  int directory_;
  std::string name_;
  Descriptor listener_;
  std::function<void(Protocol::socket)> onVisitor_;
  std::unique_ptr<Protocol::acceptor> acceptor_;
};

class SocketInstance : public RunningInstance {
 public:
  SocketInstance(Descriptor directory, Descriptor lock, const std::string& name)
      : directory_(std::move(directory)),
        lock_(std::move(lock)),
        close_(directory_, name + ".socket"),
        start_(directory_, name + ".start") {}

  bool IsOpen() const { return close_.IsOpen() && start_.IsOpen(); }

  void OnCloseRequest(const asio::any_io_executor& executor,
                      std::function<void()> onClose) override {
    onClose_ = std::move(onClose);
    close_.OnVisitor(executor, [this](Protocol::socket visitor) {
      waiting_.push_back(std::move(visitor));
      if (const auto action = std::exchange(onClose_, nullptr)) action();
    });
  }

  void OnStartRequest(const asio::any_io_executor& executor,
                      std::function<void()> onStart) override {
    start_.OnVisitor(executor, [action = std::move(onStart)](Protocol::socket) { action(); });
  }

 private:
  Descriptor directory_;
  Descriptor lock_;
  std::function<void()> onClose_;
  std::vector<Protocol::socket> waiting_;  // closing tells clients that cannot see the process
  Door close_;
  Door start_;
};

std::vector<std::string> SocketNames(const Descriptor& directory) {
  std::vector<std::string> names;
  DIR* entries = fdopendir(openat(directory.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (entries == nullptr) return names;
  while (const dirent* entry = readdir(entries)) {
    const std::string name = entry->d_name;
    if (name.ends_with(".socket")) names.push_back(name);
  }
  closedir(entries);
  return names;
}

using Deadline = std::chrono::steady_clock::time_point;

struct Instance {
  Descriptor connection;
  Descriptor process;
};

// Not open if the process cannot be seen from here, as from another container.
Descriptor ProcessBehind(const Descriptor& connection) {
  ucred peer = {};
  socklen_t size = sizeof(peer);
  getsockopt(connection.Get(), SOL_SOCKET, SO_PEERCRED, &peer, &size);
  return Descriptor(peer.pid > 0 ? pidfd_open(peer.pid, 0) : -1);
}

// A socket left behind by a dead process refuses connections.
Descriptor ConnectTo(const Descriptor& directory, const std::string& name) {
  // Nonblocking: an instance that no longer accepts must not block this one.
  Descriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const Protocol::endpoint address = Address(directory, name);
  const int result =
      connect(connection.Get(), address.data(), static_cast<socklen_t>(address.size()));
  return result == 0 ? std::move(connection) : Descriptor();
}

// The running instances.
std::vector<Instance> ConnectToInstances(const Descriptor& directory) {
  std::vector<Instance> instances;
  for (const std::string& name : SocketNames(directory)) {
    Descriptor connection = ConnectTo(directory, name);
    if (!connection.IsOpen()) continue;
    Descriptor process = ProcessBehind(connection);
    instances.push_back({std::move(connection), std::move(process)});
  }
  return instances;
}

bool WaitUntilGone(const Instance& instance, Deadline deadline) {
  const Descriptor& sign = instance.process.IsOpen() ? instance.process : instance.connection;
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
  pollfd wait = {sign.Get(), POLLIN, 0};
  return left.count() > 0 && poll(&wait, 1, static_cast<int>(left.count())) > 0;
}

}  // namespace

std::unique_ptr<RunningInstance> RunningInstance::Announce(const fs::path& executable,
                                                           const fs::path& programDirectory) {
  Descriptor directory = OpenRuntimeDirectory();
  if (!directory.IsOpen()) return std::make_unique<UnreachableInstance>();
  const std::string name = InstanceName(executable, programDirectory);
  Descriptor lock(
      openat(directory.Get(), (name + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!lock.IsOpen()) return std::make_unique<UnreachableInstance>();
  if (flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return nullptr;
    return std::make_unique<UnreachableInstance>();
  }
  auto instance = std::make_unique<SocketInstance>(std::move(directory), std::move(lock), name);
  if (!instance->IsOpen()) return std::make_unique<UnreachableInstance>();
  return instance;
}

bool AskToStart(const fs::path& executable, const fs::path& programDirectory) {
  const Descriptor directory = OpenRuntimeDirectory();
  if (!directory.IsOpen()) return false;
  return ConnectTo(directory, InstanceName(executable, programDirectory) + ".start").IsOpen();
}

bool CloseRunningInstances(std::chrono::seconds patience) {
  const Deadline deadline = std::chrono::steady_clock::now() + patience;
  const Descriptor directory = OpenRuntimeDirectory();
  if (!directory.IsOpen()) return false;
  // Repeated until none is found: another may have started while these were closing.
  while (true) {
    const std::vector<Instance> instances = ConnectToInstances(directory);
    if (instances.empty()) return true;
    for (const Instance& instance : instances) {
      if (!WaitUntilGone(instance, deadline)) return false;
    }
  }
}

}  // namespace platform
