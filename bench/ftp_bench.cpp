// The FTP server against plain loops in the same run, against vsftpd where it is installed, and
// against itself at other sizes.
//
// ftp_bench <Tarnwerk> [measurement...]
//
// With a display the program opens its window, without one it has none. Names of measurements
// (retr, stor, eight, small, list, answers, memory) leave out the others.
//
// Every figure is a ratio within this run, or a size. "want" says what we hold ourselves to.

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/running_program.h"
#include "bench/sockets.h"
#include "bench/tarnwerk.h"

namespace {

using bench::ConnectTo;
using bench::Descriptor;
using bench::Folder;
using bench::Loopback;
using bench::ReceiveAll;
using bench::RunningProgram;
using bench::SendAll;
using bench::Tarnwerk;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kBigBytes = 256U << 20;
constexpr std::size_t kChunkBytes = 4096;
constexpr int kRounds = 7;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

void SendMany(int connection, std::size_t bytes) {
  const std::vector<char> piece(65536, 'u');
  for (std::size_t sent = 0; sent < bytes; sent += piece.size()) {
    SendAll(connection, {piece.data(), piece.size()});
  }
}

// Two connected sockets of this process.
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

// Seconds for the plain loops that the server is measured by.
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

double PlainReceive(const std::string& path) {
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
  SendMany(pair.client->Number(), kBigBytes);
  pair.client.reset();
  receiver.join();
  return SecondsSince(start);
}

// A control connection.
class Ftp {
 public:
  explicit Ftp(std::uint16_t port) : control_(ConnectTo(port)) { Reply(); }

  std::string Ask(const std::string& line) {
    Tell(line);
    return Reply();
  }
  void Tell(const std::string& line) {
    const std::string command = line + "\r\n";
    SendAll(control_.Number(), command);
  }
  std::string Reply() {
    std::size_t end = 0;
    std::array<char, 1024> buffer;
    while ((end = received_.find("\r\n")) == std::string::npos) {
      const ssize_t count = recv(control_.Number(), buffer.data(), buffer.size(), 0);
      if (count <= 0) return {};
      received_.append(buffer.data(), static_cast<std::size_t>(count));
    }
    std::string reply = received_.substr(0, end);
    received_.erase(0, end + 2);
    return reply;
  }
  Descriptor OpenPassive() {
    const std::string reply = Ask("PASV");
    const std::size_t low = reply.rfind(',');
    const std::size_t high = reply.rfind(',', low - 1);
    const int port = std::stoi(reply.substr(high + 1)) * 256 + std::stoi(reply.substr(low + 1));
    return ConnectTo(static_cast<std::uint16_t>(port));
  }
  /// Bytes received; the replies are waited for.
  std::uint64_t Fetch(const std::string& line) {
    std::uint64_t bytes = 0;
    {
      const Descriptor data = OpenPassive();
      Tell(line);
      bytes = ReceiveAll(data.Number());
    }
    Reply();
    Reply();
    return bytes;
  }

 private:
  Descriptor control_;
  std::string received_;
};

class Vsftpd {
 public:
  explicit Vsftpd(const Folder& folder)
      : port_(bench::FreePort()),
        settings_(WriteSettings(folder)),
        process_({"vsftpd", folder.Path("vsftpd.conf")}, {}) {
    running_ = std::filesystem::exists("/usr/sbin/vsftpd") && bench::WaitForPort(port_) >= 0;
  }
  bool IsRunning() const { return running_; }
  std::uint16_t Port() const { return port_; }

 private:
  bool WriteSettings(const Folder& folder) const {
    folder.Write("vsftpd.conf",
                 "listen=YES\nlisten_ipv6=NO\nbackground=NO\nlisten_address=127.0.0.1\n"
                 "anonymous_enable=YES\nlocal_enable=NO\nno_anon_password=YES\nseccomp_sandbox=NO\n"
                 "secure_chroot_dir=/var/empty\nlisten_port=" +
                     std::to_string(port_) + "\nanon_root=" + folder.Path("ftproot") + "\n");
    std::filesystem::create_directories("/var/empty");
    return true;
  }

  std::uint16_t port_;
  bool settings_;
  RunningProgram process_;
  bool running_ = false;
};

double SecondsOf(const std::function<void()>& action) {
  const auto start = Clock::now();
  action();
  return SecondsSince(start);
}

// The fastest of some rounds of each, in turn: what others take of the machine only ever adds.
struct Fastest {
  double plain = 1e9;
  double ours = 1e9;

  void Add(double plainSeconds, double ourSeconds) {
    plain = std::min(plain, plainSeconds);
    ours = std::min(ours, ourSeconds);
  }
};

void CompareRetr(const Tarnwerk& tarnwerk, const Folder& folder) {
  Ftp ftp(tarnwerk.FtpPort());
  Fastest fastest;
  std::uint64_t fewest = kBigBytes;
  for (int round = 0; round < kRounds; ++round) {
    const double plain = PlainSend(folder.Path("ftproot/big.bin"));
    const double ours = SecondsOf([&] { fewest = std::min(fewest, ftp.Fetch("RETR /big.bin")); });
    fastest.Add(plain, ours);
  }
  std::printf(
      "RETR: %.2f of the plain loop (%.0f MB/s, %llu bytes); want 0.90, with a window 0.33\n",
      fastest.plain / fastest.ours, static_cast<double>(kBigBytes) / fastest.ours / 1e6,
      static_cast<unsigned long long>(fewest));
}

void CompareStor(const Tarnwerk& tarnwerk, const Folder& folder) {
  Ftp ftp(tarnwerk.FtpPort());
  ftp.Ask("CWD /");
  Fastest fastest;
  for (int round = 0; round < kRounds; ++round) {
    std::filesystem::remove(folder.Path("plain.bin"));
    const double plain = PlainReceive(folder.Path("plain.bin"));
    std::filesystem::remove(folder.Path("ftproot/stored.bin"));
    const double ours = SecondsOf([&] {
      {
        const Descriptor data = ftp.OpenPassive();
        ftp.Ask("STOR stored.bin");
        SendMany(data.Number(), kBigBytes);
      }
      ftp.Reply();
    });
    fastest.Add(plain, ours);
  }
  std::printf("STOR: %.2f of the plain loop (%llu bytes); want 0.90\n",
              fastest.plain / fastest.ours,
              static_cast<unsigned long long>(
                  std::filesystem::file_size(folder.Path("ftproot/stored.bin"))));
}

// When each of so many clients at once had the whole file.
std::vector<double> FetchTogether(std::uint16_t port, std::size_t count) {
  std::vector<std::unique_ptr<Ftp>> clients;
  std::vector<Descriptor> data;
  for (std::size_t i = 0; i < count; ++i) {
    clients.push_back(std::make_unique<Ftp>(port));
    data.push_back(clients.back()->OpenPassive());
    clients.back()->Ask("NOOP");  // the connection has been accepted before the next PASV
  }
  std::vector<double> seconds(count);
  const auto start = Clock::now();
  std::vector<std::thread> receivers;
  for (std::size_t i = 0; i < count; ++i) {
    clients[i]->Tell("RETR /big.bin");
    receivers.emplace_back([&, i] {
      ReceiveAll(data[i].Number());
      seconds[i] = SecondsSince(start);
    });
  }
  for (std::thread& receiver : receivers) receiver.join();
  return seconds;
}

void MeasureEight(const Tarnwerk& tarnwerk) {
  constexpr std::size_t kClients = 8;
  double one = 1e9;
  double all = 1e9;
  double fairness = 1;
  for (int round = 0; round < 3; ++round) {
    one = std::min(one, FetchTogether(tarnwerk.FtpPort(), 1).front());
    const std::vector<double> seconds = FetchTogether(tarnwerk.FtpPort(), kClients);
    const auto [fastest, slowest] = std::minmax_element(seconds.begin(), seconds.end());
    all = std::min(all, *slowest);
    fairness = std::min(fairness, *fastest / *slowest);
  }
  std::printf(
      "eight at once: %.2f of one client's speed; want 1.00; slowest %.2f of the fastest;"
      " want 0.50\n",
      kClients * one / all, fairness);
}

double SmallRate(std::uint16_t port) {
  Ftp ftp(port);
  ftp.Ask("USER anonymous");
  ftp.Ask("PASS x");
  ftp.Ask("TYPE I");
  const auto start = Clock::now();
  int count = 0;
  for (; SecondsSince(start) < 2; ++count) ftp.Fetch("RETR /small.bin");
  return count / SecondsSince(start);
}

void MeasureSmall(const Tarnwerk& tarnwerk, const Vsftpd& vsftpd) {
  std::printf("PASV and RETR of 4 KiB: %.0f a second; want 3000\n", SmallRate(tarnwerk.FtpPort()));
  if (vsftpd.IsRunning()) std::printf("  vsftpd: %.0f\n", SmallRate(vsftpd.Port()));
}

// The shortest time of a listing of `folder`.
double ListSeconds(std::uint16_t port, const std::string& folder, int rounds) {
  Ftp ftp(port);
  ftp.Ask("USER anonymous");
  ftp.Ask("PASS x");
  ftp.Ask("CWD /" + folder);
  double seconds = 1e9;
  for (int round = 0; round < rounds; ++round) {
    seconds = std::min(seconds, SecondsOf([&] { ftp.Fetch("LIST"); }));
  }
  return seconds;
}

void CompareListings(const Tarnwerk& tarnwerk, const Vsftpd& vsftpd) {
  const double small = ListSeconds(tarnwerk.FtpPort(), "thousand", 15) / 1000;
  const double large = ListSeconds(tarnwerk.FtpPort(), "hundred", 5) / 100000;
  std::printf("LIST of 100,000 files: %.2f of the time per entry of 1,000 (%.1f us); want 1.20\n",
              large / small, large * 1e6);
  if (!vsftpd.IsRunning()) return;
  const double theirs = ListSeconds(vsftpd.Port(), "hundred", 5) / 100000;
  std::printf("LIST of 100,000 files: %.2f of vsftpd's time; want 1.50\n", large / theirs);
  const double theirSmall = ListSeconds(vsftpd.Port(), "thousand", 15) / 1000;
  std::printf("  vsftpd: %.2f of its time per entry of 1,000\n", theirs / theirSmall);
}

// How long another session waits for an answer while large listings are built.
void MeasureAnswers(const Tarnwerk& tarnwerk) {
  std::atomic<bool> done = false;
  std::thread listing([&] {
    ListSeconds(tarnwerk.FtpPort(), "hundred", 3);
    done = true;
  });
  Ftp other(tarnwerk.FtpPort());
  double worst = 0;
  while (!done) {
    worst = std::max(worst, SecondsOf([&] { other.Ask("NOOP"); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  listing.join();
  std::printf("an answer during listings of 100,000 files: %.1f ms at worst; want 50\n",
              worst * 1000);
}

void MeasureMemory(const Tarnwerk& tarnwerk) {
  const auto before = tarnwerk.Process().AnonymousMemory();
  std::vector<std::unique_ptr<Ftp>> clients;
  std::vector<Descriptor> data;
  for (int i = 0; i < 8; ++i) {
    clients.push_back(std::make_unique<Ftp>(tarnwerk.FtpPort()));
    data.push_back(clients.back()->OpenPassive());
    clients.back()->Ask("RETR /big.bin");
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  std::printf("eight standing transfers of 256 MiB: %lld KiB more memory\n",
              static_cast<long long>(tarnwerk.Process().AnonymousMemory()) -
                  static_cast<long long>(before));
}

void Fill(const Folder& folder, bool withLargeFolders) {
  folder.Write("ftproot/big.bin", std::string(kBigBytes, 'x'));
  folder.Write("ftproot/small.bin", std::string(4096, 'x'));
  if (!withLargeFolders) return;
  for (int i = 0; i < 100000; ++i) {
    const std::string name = "file" + std::to_string(1000000 + i) + ".txt";
    folder.Write("ftproot/hundred/" + name, "x");
    if (i < 1000) folder.Write("ftproot/thousand/" + name, "x");
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) {
    std::fputs("usage: ftp_bench <Tarnwerk> [retr|stor|eight|small|list|answers|memory]...\n",
               stderr);
    return 2;
  }
  const std::vector<std::string> wanted(arguments + 2, arguments + argumentCount);
  const auto isWanted = [&](const char* name) {
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end();
  };
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const Folder folder;
  Fill(folder, isWanted("list") || isWanted("answers"));
  using Display = Tarnwerk::Display;
  const bool isSeen = std::getenv("DISPLAY") != nullptr;
  const Tarnwerk tarnwerk(arguments[1], folder, isSeen ? Display::kOurs : Display::kNone);
  const Vsftpd vsftpd(folder);
  if (isWanted("retr")) CompareRetr(tarnwerk, folder);
  if (isWanted("stor")) CompareStor(tarnwerk, folder);
  if (isWanted("eight")) MeasureEight(tarnwerk);
  if (isWanted("small")) MeasureSmall(tarnwerk, vsftpd);
  if (isWanted("list")) CompareListings(tarnwerk, vsftpd);
  if (isWanted("answers")) MeasureAnswers(tarnwerk);
  if (isWanted("memory")) MeasureMemory(tarnwerk);
  return 0;
}
