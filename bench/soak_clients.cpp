#include "bench/soak_clients.h"

#include <sys/socket.h>

#include <cstdlib>
#include <string_view>

namespace bench {

using namespace std::string_literals;

std::string Receive(const Descriptor& client, std::size_t most) {
  const timeval moment = {1, 0};
  setsockopt(client.Number(), SOL_SOCKET, SO_RCVTIMEO, &moment, sizeof(moment));
  std::string bytes(most, '\0');
  const ssize_t count = recv(client.Number(), bytes.data(), bytes.size(), 0);
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

namespace {

void ResetAtEnd(const Descriptor& client) {
  const linger now = {1, 0};
  setsockopt(client.Number(), SOL_SOCKET, SO_LINGER, &now, sizeof(now));
}

// Each kind of client, from connecting to leaving.

void SayNothing(std::uint16_t port) { const Descriptor client = ConnectTo(port); }

void ResetAtOnce(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  ResetAtEnd(client);
  SendAll(client.Number(), "GET");
}

void ShutOneSide(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  SendAll(client.Number(), "nonsense\r\n");
  shutdown(client.Number(), SHUT_WR);
  Receive(client);
}

void Flood(std::uint16_t port) {
  static const std::string flood(100000, 'x');
  const Descriptor client = ConnectTo(port);
  SendAll(client.Number(), flood);
}

// Asks for a file of several pieces and leaves without reading.
void NeverRead(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  SendAll(client.Number(), "GET /paced.bin HTTP/1.0\r\n\r\n");
}

void Fetch(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  SendAll(client.Number(), "GET /small.txt HTTP/1.0\r\n\r\n");
  ReceiveAll(client.Number());
}

// Sends each byte as an arrival of its own.
void Dribble(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  for (const char byte : std::string_view("GET ...\r\n")) {
    SendAll(client.Number(), {&byte, 1});
  }
}

// Holds no descriptor if another session's PASV has closed the port again.
Descriptor OpenPassive(const Descriptor& control) {
  SendAll(control.Number(), "PASV\r\n");
  const std::string reply = Receive(control);
  const std::size_t low = reply.rfind(',');
  if (!reply.starts_with("227 ") || low == std::string::npos) return Descriptor();
  return TryConnectTo(static_cast<std::uint16_t>(1024 + std::atoi(reply.c_str() + low + 1)));
}

// Leaves in the middle of a download, resetting the data connection.
void AbandonDownload(std::uint16_t port) {
  const Descriptor control = ConnectTo(port);
  Receive(control);
  const Descriptor data = OpenPassive(control);
  if (data.Number() < 0) return;
  SendAll(control.Number(), "RETR /paced.bin\r\n");
  Receive(data, 1000);
  ResetAtEnd(data);
}

// Sends each line and reads its reply; leaves at the first line without one.
void Converse(std::uint16_t port, const std::vector<std::string>& lines) {
  const Descriptor client = ConnectTo(port);
  if (Receive(client).empty()) return;
  for (const std::string& line : lines) {
    SendAll(client.Number(), line);
    if (Receive(client).empty()) return;
  }
}

// Its last line gets no reply.
void LeaveInMessage(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  if (Receive(client).empty()) return;
  for (const char* line : {"MAIL FROM:<box@x>\r\n", "DATA\r\n"}) {
    SendAll(client.Number(), line);
    if (Receive(client).empty()) return;
  }
  SendAll(client.Number(), "Subject: x\r\n");
}

// Each asks for as much as a client can and reads nothing.

// The CGI program outlasts the arrival of the next client.
void PostAndLeave(std::uint16_t port) {
  static const std::string request = "POST /slow.cgi? HTTP/1.0\r\n\r\n" + std::string(200000, 'x');
  const Descriptor client = ConnectTo(port);
  SendAll(client.Number(), request);
}

std::string DeepFolder() {
  std::string command = "CWD ";
  for (int i = 0; i < 15000; ++i) command += "/a";
  return command + "\r\n";
}

void StoreIntoPipe(std::uint16_t port) {
  const Descriptor control = ConnectTo(port);
  Receive(control);
  SendAll(control.Number(), "PWD\r\n");
  Receive(control);
  const Descriptor data = OpenPassive(control);
  if (data.Number() < 0) return;
  SendAll(control.Number(), "STOR pipe\r\n");
  Receive(control);
  const timeval moment = {1, 0};
  setsockopt(data.Number(), SOL_SOCKET, SO_SNDTIMEO, &moment, sizeof(moment));
  SendAll(data.Number(), std::string(100000, 'x'));
}

void LeaveRepliesUnread(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  Receive(client);
  SendAll(client.Number(), DeepFolder());
  for (int i = 0; i < 100; ++i) SendAll(client.Number(), "PWD\r\n");
}

// The maximum of commands waiting for a data connection that never comes.
void WaitForNobody(std::uint16_t port) {
  const Descriptor client = ConnectTo(port);
  Receive(client);
  for (const std::string_view word : {"LIST ", "RETR ", "STOR "}) {
    for (int i = 0; i < 20; ++i) {
      SendAll(client.Number(), std::string(word) + std::string(10000, 'x') + "\r\n");
    }
  }
}

// Requests without their version. They must not name files of this machine: a vulnerable server
// would run, send or remove what they name.
std::vector<std::string> OddRequests() {
  std::string deep;
  for (int i = 0; i < 2000; ++i) deep += "/a";
  return {"GET /small.txt\0.htm"s, "GET " + deep, "POST /slow.cgi\0.cgi?"s,
          "POST /" + std::string(60000, 'x') + ".txt?", "POST /a\r\nb\x1b[2J.txt?"};
}

void AddRude(Kinds& kinds, std::uint16_t port) {
  for (const auto& kind : {SayNothing, ResetAtOnce, ShutOneSide, Flood, Dribble}) {
    kinds.emplace_back([kind, port] { kind(port); });
  }
}

void AddPolite(Kinds& kinds, std::uint16_t port, std::vector<std::string> lines) {
  kinds.emplace_back([port, lines = std::move(lines)] { Converse(port, lines); });
}

// Sends it and reads the answer.
void AddRequest(Kinds& kinds, std::uint16_t port, const std::string& request) {
  kinds.emplace_back([port, bytes = request + " HTTP/1.0\r\n\r\n"] {
    const Descriptor client = ConnectTo(port);
    SendAll(client.Number(), bytes);
    ReceiveAll(client.Number());
  });
}

}  // namespace

Kinds WebKinds(const Tarnwerk& tarnwerk) {
  Kinds kinds;
  AddRude(kinds, tarnwerk.WebPort());
  for (const auto& kind : {Fetch, NeverRead, PostAndLeave}) {
    kinds.emplace_back([kind, port = tarnwerk.WebPort()] { kind(port); });
  }
  for (const std::string& request : OddRequests()) {
    AddRequest(kinds, tarnwerk.WebPort(), request);
  }
  return kinds;
}

Kinds OtherKinds(const Tarnwerk& tarnwerk) {
  Kinds kinds;
  for (const auto port : {tarnwerk.FtpPort(), tarnwerk.SmtpPort(), tarnwerk.Pop3Port()}) {
    AddRude(kinds, port);
  }
  AddPolite(kinds, tarnwerk.FtpPort(),
            {"USER a\r\n", "PASS b\r\n", "CWD /\r\n", "PWD\r\n", "PASV\r\n"});
  for (const auto& kind : {AbandonDownload, StoreIntoPipe, LeaveRepliesUnread, WaitForNobody}) {
    kinds.emplace_back([kind, port = tarnwerk.FtpPort()] { kind(port); });
  }
  AddPolite(
      kinds, tarnwerk.FtpPort(),
      {DeepFolder(), "PWD\r\n", "MKD x\r\n", "RNFR x\r\n", "RNTO y\r\n", "DELE *?*?.none\r\n"});
  AddPolite(kinds, tarnwerk.FtpPort(), {"PWD\r\n", "DELE small.bin\0x\r\n"s, "RMD x\0y\r\n"s});
  // No recipient: the data of flooding clients would become its message.
  AddPolite(kinds, tarnwerk.SmtpPort(),
            {"HELO x\r\n", "MAIL FROM:<box@x>\r\n", "RCPT TO:<nobody@x>\r\n", "QUIT\r\n"});
  kinds.emplace_back([port = tarnwerk.SmtpPort()] { LeaveInMessage(port); });
  AddPolite(kinds, tarnwerk.Pop3Port(),
            {"USER box\r\n", "PASS x\r\n", "STAT\r\n", "LIST\r\n", "QUIT\r\n"});
  AddPolite(kinds, tarnwerk.Pop3Port(), {"USER box\0x\r\n"s, std::string(50000, 'a')});
  AddPolite(kinds, tarnwerk.SmtpPort(), {"MAIL FROM:<box\0x@x>\r\n"s, "RCPT TO:<box\0x@x>\r\n"s});
  return kinds;
}

std::vector<Descriptor> ComeToStay(const Tarnwerk& tarnwerk) {
  std::vector<Descriptor> guests;
  const auto come = [&](std::uint16_t port, const std::string& bytes) {
    guests.push_back(ConnectTo(port));
    SendAll(guests.back().Number(), bytes);
  };
  for (int i = 0; i < 5; ++i) {
    come(tarnwerk.WebPort(), "POST /slow.cgi? HTTP/1.0\r\n\r\n");
    come(tarnwerk.WebPort(), "GET /paced.bin HTTP/1.0\r\n\r\n");
    come(tarnwerk.FtpPort(), DeepFolder());
    come(tarnwerk.FtpPort(), "LIST\r\n");
    come(tarnwerk.SmtpPort(), "DATA\r\n");
  }
  return guests;
}

}  // namespace bench
