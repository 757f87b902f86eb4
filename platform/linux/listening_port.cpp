#include "platform/listening_port.h"

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kListening = "0A";
constexpr std::size_t kLocalAddress = 1;
constexpr std::size_t kState = 3;
constexpr std::size_t kInode = 9;

std::vector<std::string> WordsOf(const std::string& line) {
  std::istringstream words(line);
  return {std::istream_iterator<std::string>(words), {}};
}

// The format is address:port in hex, "0100007F:0050".
bool HasPort(std::string_view address, std::uint16_t port) {
  const std::string_view digits = address.substr(address.find(':') + 1);
  unsigned number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  return number == port;
}

std::optional<std::string> ListenerIn(const char* table, std::uint16_t port) {
  std::ifstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    const std::vector<std::string> words = WordsOf(line);
    if (words.size() <= kInode || words[kState] != kListening) continue;
    if (HasPort(words[kLocalAddress], port)) return "socket:[" + words[kInode] + "]";
  }
  return std::nullopt;
}

// The descriptors of other users' processes cannot be read; such processes hold none.
bool Holds(const fs::path& process, const std::string& socket) {
  std::error_code error;
  for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code unreadable;
    if (fs::read_symlink(entry->path(), unreadable) == socket) return true;
  }
  return false;
}

std::optional<PortOwner> HolderOf(const std::string& socket) {
  std::error_code error;
  for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    PortOwner owner;
    const auto parsed = std::from_chars(name.data(), name.data() + name.size(), owner.process);
    if (parsed.ec != std::errc() || !Holds(entry->path(), socket)) continue;
    std::ifstream program(entry->path() / "comm");
    std::getline(program, owner.program);
    return owner;
  }
  return std::nullopt;
}

}  // namespace

// Compares numbers: not every category of these errors compares equal to std::errc.
ListenTrouble TroubleOf(const std::error_code& error) {
  switch (error.value()) {
    case EADDRINUSE:
      return ListenTrouble::kPortTaken;
    case EACCES:
      return ListenTrouble::kNoRight;
    default:
      return ListenTrouble::kOther;
  }
}

std::optional<PortOwner> WhoListensOn(std::uint16_t port) {
  for (const char* table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
    if (const auto socket = ListenerIn(table, port)) return HolderOf(*socket);
  }
  return std::nullopt;
}

}  // namespace platform
