#include "bench/mail_load.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <vector>

#include "bench/failure.h"
#include "bench/mail_client.h"
#include "bench/median.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

constexpr const char* kRecipient = "RCPT TO:<box@x>\r\n";
constexpr int kStats = 200;

std::string_view EndOf(MessageEnd end) {
  constexpr std::string_view kTarnwerksEnd("\0.\r\n.\r\n", 7);
  return end == MessageEnd::kDot ? "\r\n.\r\n" : kTarnwerksEnd;
}

void SignIn(MailClient& client) {
  Expect(client.Ask("USER box\r\n") && client.Ask("PASS x\r\n"), "POP3: no sign-in");
}

}  // namespace

std::string MessageText(std::size_t size) {
  std::string text = "Subject: bench\r\n\r\n";
  text.reserve(size + 100);
  while (text.size() < size) text += "A line of a message, as long as most of its other lines\r\n";
  return text;
}

std::string SentMessage(std::size_t size) { return MessageText(size) + ".\r\n"; }

double SendSeconds(std::uint16_t port, const std::string& message, int count,
                   Recipients recipients) {
  const bool isOnce = recipients == Recipients::kOnce;
  MailClient client(port);
  Expect(client.Ask("HELO x\r\n") && (!isOnce || client.Ask(kRecipient)), "SMTP: no session");
  const Clock::time_point start = Clock::now();
  for (int i = 0; i < count; ++i) {
    const bool saved = client.Ask("MAIL FROM:<box@x>\r\n") &&
                       client.Ask(isOnce ? "NOOP\r\n" : kRecipient) && client.Ask("DATA\r\n") &&
                       client.Ask(message);
    Expect(saved, "SMTP: a message was not taken");
  }
  const double seconds = SecondsSince(start);
  client.Ask("QUIT\r\n");
  return seconds;
}

double CollectSeconds(std::uint16_t port, int count, std::size_t bytes, MessageEnd end) {
  MailClient client(port);
  SignIn(client);
  const Clock::time_point start = Clock::now();
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i) + "\r\n";
    const bool done = client.Ask("STAT\r\n") && client.Ask("RETR " + number, EndOf(end)) &&
                      client.ReplyBytes() > bytes && client.Ask("DELE " + number);
    Expect(done, "POP3: a message was not sent");
  }
  const double seconds = SecondsSince(start);
  client.Ask("QUIT\r\n");
  return seconds;
}

double StatSeconds(std::uint16_t port) {
  MailClient client(port);
  SignIn(client);
  std::vector<double> seconds;
  for (int i = 0; i < kStats; ++i) {
    seconds.push_back(SecondsOf([&] { Expect(client.Ask("STAT\r\n"), "POP3: no STAT"); }));
  }
  client.Ask("QUIT\r\n");
  return Median(seconds);
}

void FillMailbox(const Tarnwerk& tarnwerk, int count, const std::string& text) {
  for (int i = 1; i <= count; ++i) {
    std::ofstream(tarnwerk.Message(i), std::ios::binary) << text << ".\r\n";
  }
}

void EmptyMailbox(const Tarnwerk& tarnwerk, int count) {
  for (int i = 1; i <= count; ++i) std::filesystem::remove(tarnwerk.Message(i));
}

}  // namespace bench
