// The mail server against a plain loop, and its unpacking against base64.
//
// mail_bench <Tarnwerk>
//
// Every figure is a ratio within this run. "want" is the goal.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "bench/failure.h"
#include "bench/mail_client.h"
#include "bench/mail_load.h"
#include "bench/mail_peers.h"
#include "bench/median.h"
#include "bench/stopwatch.h"
#include "bench/tarnwerk.h"

namespace {

using bench::Clock;
using bench::Expect;
using bench::Folder;
using bench::MailClient;
using bench::Median;
using bench::PlainLoop;
using bench::SecondsSince;
using bench::SendSeconds;
using bench::Tarnwerk;
namespace fs = std::filesystem;

// A mailbox holds 49 messages.
constexpr int kMessages = 40;
constexpr int kRounds = 9;
constexpr int kReceivingRounds = 60;  // short ones: what a flush takes differs widely

// Receiving

double SendOurs(const Tarnwerk& tarnwerk, const std::string& message) {
  return SendSeconds(tarnwerk.SmtpPort(), message, kMessages, bench::Recipients::kOnce);
}

void CompareReceiving(const Tarnwerk& tarnwerk, const Folder& folder) {
  const PlainLoop plain(folder);
  const std::string message = bench::SentMessage(10240);
  std::vector<double> ratios;
  double rate = 0;
  for (int round = 0; round < kReceivingRounds; ++round) {
    // Alternate who goes first: the disk is still busy with the other's last files.
    const bool oursFirst = round % 2 == 1;
    double ours = oursFirst ? SendOurs(tarnwerk, message) : 0;
    const double theirs =
        SendSeconds(plain.Port(), message, kMessages, bench::Recipients::kEachTime);
    if (!oursFirst) ours = SendOurs(tarnwerk, message);
    Expect(fs::file_size(tarnwerk.Message(kMessages)) == message.size(), "a message is wrong");
    ratios.push_back(theirs / ours);
    rate = kMessages / ours;
    bench::EmptyMailbox(tarnwerk, kMessages);
    fs::remove_all(folder.Path("plain"));
    fs::create_directories(folder.Path("plain"));
  }
  std::printf("10 KiB received and flushed: %.2f of a plain loop (%.0f a second); want 0.90\n",
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
  Expect(std::system(command.c_str()) == 0, "base64 failed");
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
    Expect(SecondsSince(start) < 60, "nothing was unpacked");
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
  if (argumentCount != 2) {
    std::fputs("usage: mail_bench <Tarnwerk>\n", stderr);
    return 2;
  }
  return bench::RunOrReport([&] {
    const Folder folder;
    const Tarnwerk tarnwerk(arguments[1], folder);
    CompareReceiving(tarnwerk, folder);
    CompareUnpacking(tarnwerk, folder);
  });
}
