#include "bench/plain_transfers.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <thread>
#include <vector>

#include "bench/ftp_client.h"
#include "bench/sockets.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

constexpr std::size_t kChunkBytes = 4096;

// A connected pair of sockets within this process.
struct SocketPair {
  SocketPair() {
    const Descriptor listener(socket(AF_INET, SOCK_STREAM, 0));
    sockaddr_in address = Loopback(0);
    socklen_t length = sizeof(address);
    bind(listener.Number(), reinterpret_cast<sockaddr*>(&address), length);
    listen(listener.Number(), 1);
    getsockname(listener.Number(), reinterpret_cast<sockaddr*>(&address), &length);
    client = std::make_unique<Descriptor>(ConnectTo(ntohs(address.sin_port)));
    server = std::make_unique<Descriptor>(accept(listener.Number(), nullptr, nullptr));
  }
  std::unique_ptr<Descriptor> client;
  std::unique_ptr<Descriptor> server;
};

}  // namespace

double PlainSend(const std::string& path) {
  SocketPair pair;
  const auto start = Clock::now();
  std::thread sender([&] {
    const Descriptor file(open(path.c_str(), O_RDONLY));
    std::array<char, kChunkBytes> chunk;
    ssize_t count = 0;
    while ((count = read(file.Number(), chunk.data(), chunk.size())) > 0) {
      SendAll(pair.server->Number(), {chunk.data(), static_cast<std::size_t>(count)});
    }
    pair.server.reset();
  });
  ReceiveAll(pair.client->Number());
  const double seconds = SecondsSince(start);
  sender.join();
  return seconds;
}

double PlainReceive(const std::string& path, std::size_t bytes) {
  SocketPair pair;
  const auto start = Clock::now();
  std::thread receiver([&] {
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT, 0666));
    std::vector<char> buffer(65536);
    ssize_t count = 0;
    while ((count = recv(pair.server->Number(), buffer.data(), buffer.size(), 0)) > 0) {
      if (write(file.Number(), buffer.data(), static_cast<std::size_t>(count)) != count) return;
    }
  });
  SendMany(pair.client->Number(), bytes);
  pair.client.reset();
  receiver.join();
  return SecondsSince(start);
}

}  // namespace bench
