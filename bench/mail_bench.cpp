// The mail server against a plain loop, against dovecot, and its unpacking against base64.
//
// mail_bench <Tarnwerk>
//
// Every figure is a ratio within this run. "want" is the goal. Dovecot must be
// started by root.

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "bench/mail_client.h"
#include "bench/mail_peers.h"
#include "bench/tarnwerk.h"

namespace {

using bench::Dovecot;
using bench::Folder;
using bench::MailClient;
using bench::PlainLoop;
using bench::Tarnwerk;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

// A mailbox holds 49 messages.
constexpr int kMessages = 40;
constexpr int kRounds = 9;
constexpr int kReceivingRounds = 60;  // short ones: what a flush takes differs widely
constexpr const char* kMessageEnd = "\r\n.\r\n";

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

std::string TextOf(std::size_t size) {
  std::string text = "Subject: bench\r\n\r\n";
  while (text.size() < size) text += "A line of a message, as long as most lines in it are.\r\n";
  return text;
}

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

// Receiving

double MessagesPerSecond(std::uint16_t port, const std::string& message) {
  MailClient client(port);
  const Clock::time_point start = Clock::now();
  for (int i = 0; i < kMessages; ++i) {
    const bool saved = client.Ask("MAIL FROM:<box@x>\r\n") && client.Ask("RCPT TO:<box@x>\r\n") &&
                       client.Ask("DATA\r\n") && client.Ask(message);
    if (!saved) Fail("a message was not taken");
  }
  const double seconds = SecondsSince(start);
  client.Ask("QUIT\r\n");
  return kMessages / seconds;
}

// Recipients survive until QUIT, so only the first message may name the recipient: each further
// RCPT would have every message written once more.
double OurMessagesPerSecond(std::uint16_t port, const std::string& message) {
  MailClient client(port);
  if (!client.Ask("RCPT TO:<box@x>\r\n")) Fail("no recipient");
  const Clock::time_point start = Clock::now();
  for (int i = 0; i < kMessages; ++i) {
    const bool saved = client.Ask("MAIL FROM:<box@x>\r\n") && client.Ask("NOOP\r\n") &&
                       client.Ask("DATA\r\n") && client.Ask(message);
    if (!saved) Fail("a message was not taken");
  }
  const double seconds = SecondsSince(start);
  client.Ask("QUIT\r\n");
  return kMessages / seconds;
}

void RemoveMessages(const Tarnwerk& tarnwerk) {
  for (int i = 1; i <= kMessages; ++i) fs::remove(tarnwerk.Message(i));
}

void CompareReceiving(const Tarnwerk& tarnwerk, const Folder& folder) {
  const PlainLoop plain(folder);
  const std::string message = TextOf(10240) + ".\r\n";
  std::vector<double> ratios;
  double rate = 0;
  for (int round = 0; round < kReceivingRounds; ++round) {
    // Alternate who goes first: the disk is still busy with the other's last files.
    const bool oursFirst = round % 2 == 1;
    double ours = oursFirst ? OurMessagesPerSecond(tarnwerk.SmtpPort(), message) : 0;
    const double theirs = MessagesPerSecond(plain.Port(), message);
    if (!oursFirst) ours = OurMessagesPerSecond(tarnwerk.SmtpPort(), message);
    if (fs::file_size(tarnwerk.Message(kMessages)) != message.size()) Fail("a message is wrong");
    ratios.push_back(ours / theirs);
    rate = ours;
    RemoveMessages(tarnwerk);
    fs::remove_all(folder.Path("plain"));
    fs::create_directories(folder.Path("plain"));
  }
  std::printf("10 KiB received and flushed: %.2f of a plain loop (%.0f a second); want 0.90\n",
              Median(ratios), rate);
}

// Collecting

double CollectedPerSecond(std::uint16_t port, const std::string& end) {
  MailClient client(port);
  if (!client.Ask("USER box\r\n") || !client.Ask("PASS x\r\n")) Fail("no login");
  const Clock::time_point start = Clock::now();
  for (int i = 1; i <= kMessages; ++i) {
    const std::string number = std::to_string(i) + "\r\n";
    const bool done =
        client.Ask("STAT\r\n") && client.Ask("RETR " + number, end) && client.Ask("DELE " + number);
    if (!done) Fail("a message was not sent");
  }
  const double seconds = SecondsSince(start);
  client.Ask("QUIT\r\n");
  return kMessages / seconds;
}

void CompareCollecting(const Tarnwerk& tarnwerk, const Folder& folder) {
  const Dovecot dovecot(folder);
  const std::string message = TextOf(10240);
  std::vector<double> ratios;
  double rate = 0;
  for (int round = 0; round < kRounds; ++round) {
    for (int i = 1; i <= kMessages; ++i) {
      dovecot.Deliver(round * kMessages + i, message);
      std::ofstream(tarnwerk.Message(i), std::ios::binary) << message << ".\r\n";
    }
    const double theirs = CollectedPerSecond(dovecot.Port(), kMessageEnd);
    const double ours = CollectedPerSecond(tarnwerk.Pop3Port(), std::string("\0.\r\n.\r\n", 7));
    ratios.push_back(ours / theirs);
    rate = ours;
  }
  std::printf("STAT, RETR, DELE of 10 KiB: %.2f of dovecot (%.0f a second); want 1.20\n",
              Median(ratios), rate);
}

// Unpacking

std::string EncodedAttachment(std::size_t size) {
  std::string encoded;
  encoded.reserve(size / 57 * 78 + 78);
  const std::string line =
      "VGFybndlcmsgVGFybndlcmsgVGFybndlcmsgVGFybndlcmsgVGFybndlcmsgVGFybndlcmsgVGFy";
  while (encoded.size() / 78 * 57 < size) encoded += line + "\r\n";
  return encoded;
}

double Base64Seconds(const Folder& folder) {
  const std::string command =
      "base64 -d -i <" + folder.Path("encoded") + " >" + folder.Path("decoded");
  const Clock::time_point start = Clock::now();
  if (std::system(command.c_str()) != 0) Fail("base64 failed");
  return SecondsSince(start);
}

struct Unpacked {
  double seconds = 0;
  std::uint64_t memory = 0;  // KiB beyond what there was before
};

// Seconds from QUIT to the last line of the trace, which is written last.
Unpacked Unpack(const Tarnwerk& tarnwerk, const Folder& folder) {
  const std::string trace = folder.Path("mailroot/User/email.msg");
  const auto ending = fs::file_size(tarnwerk.Message(1)) * 2;
  fs::remove(trace);
  // The message's number is one more than the last count.
  MailClient(tarnwerk.Pop3Port()).Ask("REST\r\n");
  MailClient client(tarnwerk.SmtpPort());
  client.Ask("RCPT TO:<box@x>\r\n");
  const std::uint64_t before = tarnwerk.Process().AnonymousMemory();
  Unpacked unpacked;
  const Clock::time_point start = Clock::now();
  client.Ask("QUIT\r\n");
  std::error_code error;
  for (std::uintmax_t size = 0; size <= ending || error; size = fs::file_size(trace, error)) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    unpacked.memory = std::max(unpacked.memory, tarnwerk.Process().AnonymousMemory() - before);
    if (SecondsSince(start) > 60) Fail("nothing was unpacked");
  }
  unpacked.seconds = SecondsSince(start);
  return unpacked;
}

void CompareUnpacking(const Tarnwerk& tarnwerk, const Folder& folder) {
  const std::string encoded = EncodedAttachment(25U << 20);
  folder.Write("encoded", encoded);
  std::ofstream(tarnwerk.Message(1), std::ios::binary)
      << "Subject: bench\r\nContent-Type: multipart/mixed; boundary=\"b\"\r\n\r\n--b\r\n"
         "Content-Disposition: attachment; filename=\"a.bin\"\r\n"
         "Content-Transfer-Encoding: base64\r\n\r\n"
      << encoded << "--b--\r\n.\r\n";
  std::vector<double> ratios;
  std::uint64_t memory = 0;
  for (int round = 0; round < kRounds; ++round) {
    const double theirs = Base64Seconds(folder);
    const Unpacked ours = Unpack(tarnwerk, folder);
    ratios.push_back(theirs / ours.seconds);
    memory = std::max(memory, ours.memory);
  }
  std::printf("25 MiB unpacked: %.2f of the speed of base64 -d; want 0.50\n", Median(ratios));
  std::printf("memory for that: %.2f times the message; want less than 4\n",
              static_cast<double>(memory) * 1024 / static_cast<double>(encoded.size()));
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) Fail("usage: mail_bench <Tarnwerk>");
  const Folder folder;
  const Tarnwerk tarnwerk(arguments[1], folder);
  CompareReceiving(tarnwerk, folder);
  CompareUnpacking(tarnwerk, folder);
  CompareCollecting(tarnwerk, folder);
  return 0;
}
