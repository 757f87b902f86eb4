// A million connections, and what is left of them.
//
// soak <Tarnwerk> [connections]
//
// Clients of every kind come to all four ports, one after another on several threads: those that do
// what they should, and those that say nothing, leave early, reset, shut one side, flood, or never
// read. Memory and descriptors are compared between the first tenth and the end. Then a paced
// download has to keep its time while such clients come to the other ports; on its own port the
// twentieth of them would take its slot.

#include <sys/socket.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "bench/load_client.h"
#include "bench/sockets.h"
#include "bench/tarnwerk.h"

namespace {

using bench::ConnectTo;
using bench::Descriptor;
using bench::Tarnwerk;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kPieceBytes = 10240;
constexpr std::size_t kPieces = 20;
constexpr int kThreads = 4;

/// Reads what comes within a moment, at most `most` bytes.
std::string Receive(const Descriptor& client, std::size_t most = 4096) {
  const timeval moment = {1, 0};
  setsockopt(client.Number(), SOL_SOCKET, SO_RCVTIMEO, &moment, sizeof(moment));
  std::string bytes(most, '\0');
  const ssize_t count = recv(client.Number(), bytes.data(), bytes.size(), 0);
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

void ResetAtEnd(const Descriptor& client) {
  const linger now = {1, 0};
  setsockopt(client.Number(), SOL_SOCKET, SO_LINGER, &now, sizeof(now));
}

// The kinds of clients, each from connecting to leaving.

void SayNothing(std::uint16_t port) { const Descriptor client = ConnectTo(port); }

void ResetAtOnce(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  ResetAtEnd(client);
  bench::SendAll(client.Number(), "GET");
}

void ShutOneSide(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  bench::SendAll(client.Number(), "nonsense\r\n");
  shutdown(client.Number(), SHUT_WR);
  Receive(client);
}

void Flood(std::uint16_t port) {
  static const std::string flood(100000, 'x');
  const Descriptor client = ConnectTo(port);
  bench::SendAll(client.Number(), flood);
}

// Asks for a file of several pieces and leaves without reading.
void NeverRead(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  bench::SendAll(client.Number(), "GET /paced.bin HTTP/1.0\r\n\r\n");
}

void Fetch(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  bench::SendAll(client.Number(), "GET /small.txt HTTP/1.0\r\n\r\n");
  bench::ReceiveAll(client.Number());
}

// Each byte an arrival of its own.
void Dribble(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  for (const char byte : std::string_view("GET ...\r\n")) {
    bench::SendAll(client.Number(), {&byte, 1});
  }
}

// Begins a download and leaves in the middle of it, the data connection with a reset.
void AbandonDownload(std::uint16_t port) {
  const Descriptor control = ConnectTo(port);
  Receive(control);
  bench::SendAll(control.Number(), "PASV\r\n");
  const std::string reply = Receive(control);
  const std::size_t low = reply.rfind(',');
  if (!reply.starts_with("227 ") || low == std::string::npos) return;
  const auto dataPort = static_cast<std::uint16_t>(1024 + std::atoi(reply.c_str() + low + 1));
  const Descriptor data = bench::TryConnectTo(dataPort);  // others' PASV closes the port again
  if (data.Number() < 0) return;
  bench::SendAll(control.Number(), "RETR /paced.bin\r\n");
  Receive(data, 1000);
  ResetAtEnd(data);
}

// Says each line and reads its answer; leaves at the first that is not answered.
void Converse(std::uint16_t port, const std::vector<std::string_view>& lines) {
  const Descriptor client = ConnectTo(port);
  if (Receive(client).empty()) return;
  for (const std::string_view line : lines) {
    bench::SendAll(client.Number(), line);
    if (Receive(client).empty()) return;
  }
}

using Kinds = std::vector<std::function<void()>>;

void AddRude(Kinds& kinds, std::uint16_t port) {
  for (const auto& kind : {SayNothing, ResetAtOnce, ShutOneSide, Flood, Dribble}) {
    kinds.emplace_back([kind, port] { kind(port); });
  }
}

void AddPolite(Kinds& kinds, std::uint16_t port, std::vector<std::string_view> lines) {
  kinds.emplace_back([port, lines = std::move(lines)] { Converse(port, lines); });
}

Kinds WebKinds(const Tarnwerk& tarnwerk) {
  Kinds kinds;
  AddRude(kinds, tarnwerk.WebPort());
  kinds.emplace_back([port = tarnwerk.WebPort()] { Fetch(port); });
  kinds.emplace_back([port = tarnwerk.WebPort()] { NeverRead(port); });
  return kinds;
}

Kinds OtherKinds(const Tarnwerk& tarnwerk) {
  Kinds kinds;
  for (const auto port : {tarnwerk.FtpPort(), tarnwerk.SmtpPort(), tarnwerk.Pop3Port()}) {
    AddRude(kinds, port);
  }
  AddPolite(kinds, tarnwerk.FtpPort(),
            {"USER a\r\n", "PASS b\r\n", "CWD /\r\n", "PWD\r\n", "PASV\r\n"});
  kinds.emplace_back([port = tarnwerk.FtpPort()] { AbandonDownload(port); });
  // No recipient: what others flood the port with would become his message.
  AddPolite(kinds, tarnwerk.SmtpPort(),
            {"HELO x\r\n", "MAIL FROM:<box@x>\r\n", "RCPT TO:<nobody@x>\r\n", "QUIT\r\n"});
  // Leaves in the middle of a message.
  AddPolite(kinds, tarnwerk.SmtpPort(), {"MAIL FROM:<box@x>\r\n", "DATA\r\n", "Subject: x\r\n"});
  AddPolite(kinds, tarnwerk.Pop3Port(),
            {"USER box\r\n", "PASS x\r\n", "STAT\r\n", "LIST\r\n", "QUIT\r\n"});
  return kinds;
}

// `count` connections, the kinds in turn.
void Come(const Kinds& kinds, std::uint64_t count) {
  std::atomic<std::uint64_t> next = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (std::uint64_t number = next++; number < count; number = next++) {
        kinds[number % kinds.size()]();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// The longest of an FTP session's answers while the others come, as long as `done` is not set. The
// session is given up when its slot is taken by another, and begun anew.
double LongestAnswer(std::uint16_t port, const std::atomic<bool>& done) {
  double longest = 0;
  while (!done) {
    const Descriptor client = ConnectTo(port);
    if (Receive(client).empty()) continue;
    while (!done) {
      const auto asked = Clock::now();
      bench::SendAll(client.Number(), "NOOP\r\n");
      if (Receive(client).empty()) break;
      longest = std::max(longest, std::chrono::duration<double>(Clock::now() - asked).count());
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }
  return longest;
}

struct Figures {
  double mebibytes = 0;
  std::size_t descriptors = 0;
};

// After everybody has left and what drained has gone.
Figures AtRest(const Tarnwerk& tarnwerk) {
  std::this_thread::sleep_for(std::chrono::seconds(7));
  return {static_cast<double>(tarnwerk.Process().AnonymousMemory()) / 1024,
          tarnwerk.Process().Descriptors()};
}

// The slowest of some paced downloads, as a ratio to its pacing, while `kinds` come.
double SlowestPaced(const Tarnwerk& tarnwerk, const Kinds& kinds) {
  std::atomic<bool> done = false;
  std::thread coming([&] {
    while (!done) Come(kinds, 500);
  });
  double slowest = 0;
  for (int i = 0; i < 5; ++i) {
    const auto fetched =
        bench::FetchOnce({tarnwerk.WebPort(), "GET /paced.bin HTTP/1.0\r\n\r\n", 1, {}});
    slowest = std::max(slowest, fetched.front().seconds / (0.050 * kPieces));
  }
  done = true;
  coming.join();
  return slowest;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) {
    std::fputs("usage: soak <Tarnwerk> [connections]\n", stderr);
    return 2;
  }
  const std::uint64_t wanted =
      argumentCount > 2 ? std::strtoull(arguments[2], nullptr, 10) : 1000000;
  const bench::Folder folder;
  folder.Write("wwwroot/small.txt", "hello");
  folder.Write("ftproot/paced.bin", std::string(1 << 20, 'd'));
  folder.Write("wwwroot/paced.bin", std::string(kPieces * kPieceBytes + 1, 'p'));
  const Tarnwerk tarnwerk(arguments[1], folder);
  const Kinds others = OtherKinds(tarnwerk);
  Kinds kinds = WebKinds(tarnwerk);
  kinds.insert(kinds.end(), others.begin(), others.end());

  Come(kinds, wanted / 10);
  const Figures early = AtRest(tarnwerk);
  std::atomic<bool> done = false;
  double longest = 0;
  std::thread asking([&] { longest = LongestAnswer(tarnwerk.FtpPort(), done); });
  const auto start = Clock::now();
  Come(kinds, wanted - wanted / 10);
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  done = true;
  asking.join();
  const Figures late = AtRest(tarnwerk);

  std::printf("connections: %llu (%.0f a second)\n", static_cast<unsigned long long>(wanted),
              static_cast<double>(wanted - wanted / 10) / seconds);
  std::printf("anonymous memory: %.2f MiB after a tenth, %.2f at the end\n", early.mebibytes,
              late.mebibytes);
  std::printf("descriptors: %zu after a tenth, %zu at the end\n", early.descriptors,
              late.descriptors);
  std::printf("longest answer of a session beside them: %.0f ms\n", longest * 1000);
  std::printf("a paced download beside such clients: %.3f of its pacing (slowest of five)\n",
              SlowestPaced(tarnwerk, others));
  const bool flat =
      late.mebibytes < early.mebibytes + 1 && late.descriptors <= early.descriptors + 2;
  if (!flat) std::puts("NOT FLAT");
  return flat ? 0 : 1;
}
