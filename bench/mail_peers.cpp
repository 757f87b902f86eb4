#include "bench/mail_peers.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <pwd.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

namespace bench {
namespace {

namespace fs = std::filesystem;

void Reply(int client, std::string_view line) {
  send(client, line.data(), line.size(), MSG_NOSIGNAL);
}

void Flush(const std::string& path, int flags) {
  const int descriptor = open(path.c_str(), flags);
  fsync(descriptor);
  close(descriptor);
}

void Append(const std::string& path, std::string_view bytes) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
  if (write(file, bytes.data(), bytes.size()) < 0) _exit(1);
  close(file);
}

bool IsCommand(std::string_view packet) {
  return packet.size() >= 4 && std::all_of(packet.begin(), packet.begin() + 4,
                                           [](char c) { return c >= 'A' && c <= 'Z'; });
}

void ServeClient(int client, const std::string& folder) {
  static std::array<char, 65536> buffer;
  Reply(client, "220 \r\n");
  int number = 1;
  while (true) {
    const ssize_t count = recv(client, buffer.data(), buffer.size(), 0);
    if (count <= 0) return;
    const std::string_view packet(buffer.data(), static_cast<std::size_t>(count));
    if (IsCommand(packet)) {
      Reply(client, "250 OK\r\n");
      continue;
    }
    const std::string path = folder + "/" + std::to_string(number);
    Append(path, packet);
    if (!packet.ends_with(".\r\n")) continue;
    Flush(path, O_RDONLY);
    Flush(folder, O_RDONLY | O_DIRECTORY);
    Reply(client, "250 OK\r\n");
    ++number;
  }
}

[[noreturn]] void Serve(std::uint16_t port, const std::string& folder) {
  const int listener = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const int now = 1;
  if (bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) _exit(1);
  listen(listener, 16);
  while (true) {
    const int client = accept(listener, nullptr, nullptr);
    setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &now, sizeof(now));
    ServeClient(client, folder);
    close(client);
  }
}

}  // namespace

PlainLoop::PlainLoop(const Folder& folder) : port_(FreePort()) {
  const std::string path = folder.Path("plain");
  fs::create_directories(path);
  process_ = fork();
  if (process_ == 0) Serve(port_, path);
  WaitForPort(port_);
}

PlainLoop::~PlainLoop() {
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

Dovecot::Dovecot(const Folder& folder) : Server(kName), folder_(folder) {
  folder.Write(
      "dovecot/dovecot.conf",
      "base_dir = " + folder.Path("dovecot/run") + "\nstate_dir = " + folder.Path("dovecot/state") +
          "\nlog_path = " + folder.Path("dovecot/log") +
          "\nprotocols = pop3\nlisten = 127.0.0.1\nssl = no\n"
          "disable_plaintext_auth = no\nmail_location = maildir:" +
          folder.Path("dovecot/maildir") +
          "\nservice pop3-login {\n  inet_listener pop3 {\n    port = " + std::to_string(Port()) +
          "\n  }\n  inet_listener pop3s {\n    port = 0\n  }\n}\n"
          "passdb {\n  driver = static\n  args = password=x\n}\n"
          "userdb {\n  driver = static\n  args = uid=nobody gid=nogroup home=" +
          folder.Path("dovecot/home") + "\n}\n");
  for (const char* name : {"cur", "new", "tmp"}) {
    fs::create_directories(folder.Path(std::string("dovecot/maildir/") + name));
  }
  fs::permissions(folder.Path("dovecot/maildir"), fs::perms::all);
  const passwd* nobody = getpwnam("nobody");
  for (const auto& entry : fs::recursive_directory_iterator(folder.Path("dovecot/maildir"))) {
    if (chown(entry.path().c_str(), nobody->pw_uid, nobody->pw_gid) != 0) break;
  }
  Run({"dovecot", "-F", "-c", folder.Path("dovecot/dovecot.conf")});
}

void Dovecot::Deliver(int number, const std::string& content) const {
  const std::string name = "dovecot/maildir/new/" + std::to_string(number) + ".box";
  folder_.Write(name, content);
  fs::permissions(folder_.Path(name), fs::perms::owner_all | fs::perms::others_read);
}

Aiosmtpd::Aiosmtpd(const Folder& folder) : Server(kName) {
  fs::create_directories(folder.Path("aiosmtpd"));
  Run({kPython, Script("aiosmtpd_server.py"), std::to_string(Port()), folder.Path("aiosmtpd")});
}

}  // namespace bench
