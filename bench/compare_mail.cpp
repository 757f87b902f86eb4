#include <filesystem>
#include <memory>
#include <utility>

#include "bench/compare.h"
#include "bench/failure.h"
#include "bench/mail_load.h"
#include "bench/mail_peers.h"
#include "bench/tarnwerk.h"

namespace bench {
namespace {

constexpr std::size_t kMessageBytes = 10240;
constexpr int kMessages = 40;  // a mailbox of ours holds 49
constexpr int kFullMailbox = 49;

Row Receive(Tarnwerk& tarnwerk, const Folder& folder) {
  LineUp lineUp;
  lineUp.Add(tarnwerk, tarnwerk.SmtpPort());
  lineUp.Add(StartPeer<Aiosmtpd>(folder));
  const std::string message = SentMessage(kMessageBytes);
  const Figure figure = {.name = "10 KiB message received and flushed: a second (CPU s per 1,000)",
                         .rounds = 15};
  return Compare(figure, lineUp.All(), [&](const Contestant& one) {
    const bool isOurs = one.server == &tarnwerk;
    const double seconds = SendSeconds(one.port, message, kMessages,
                                       isOurs ? Recipients::kOnce : Recipients::kEachTime);
    if (isOurs) {
      const auto saved = std::filesystem::file_size(tarnwerk.Message(kMessages));
      Expect(saved == message.size(), "a message is wrong");
      EmptyMailbox(tarnwerk, kMessages);
    }
    return Sample{kMessages / seconds, kMessages / 1000.0};
  });
}

// Of whom mail can be collected.
class Mailboxes {
 public:
  Mailboxes(Tarnwerk& tarnwerk, const Folder& folder) : tarnwerk_(tarnwerk) {
    lineUp_.Add(tarnwerk, tarnwerk.Pop3Port());
    std::unique_ptr<Dovecot> dovecot = StartPeer<Dovecot>(folder);
    dovecot_ = dovecot.get();
    lineUp_.Add(std::move(dovecot));
  }

  const std::vector<Contestant>& All() const { return lineUp_.All(); }
  bool IsOurs(const Contestant& one) const { return one.server == &tarnwerk_; }

  void Fill(const Contestant& one, int count) {
    const std::string text = MessageText(kMessageBytes);
    if (IsOurs(one)) {
      FillMailbox(tarnwerk_, count, text);
      return;
    }
    for (int i = 0; i < count; ++i) dovecot_->Deliver(++delivered_, text);
  }

 private:
  Tarnwerk& tarnwerk_;
  LineUp lineUp_;
  const Dovecot* dovecot_ = nullptr;
  int delivered_ = 0;
};

Row Collect(Mailboxes& mailboxes) {
  const Figure figure = {.name = "STAT, RETR, DELE of 10 KiB: a second (CPU s per 1,000)",
                         .rounds = 9,
                         .goal = "1.20 of dovecot"};
  return Compare(figure, mailboxes.All(), [&](const Contestant& one) {
    mailboxes.Fill(one, kMessages);
    const double seconds =
        CollectSeconds(one.port, kMessages, kMessageBytes,
                       mailboxes.IsOurs(one) ? MessageEnd::kTarnwerks : MessageEnd::kDot);
    return Sample{kMessages / seconds, kMessages / 1000.0};
  });
}

Row Stat(Mailboxes& mailboxes) {
  for (const Contestant& one : mailboxes.All()) mailboxes.Fill(one, kFullMailbox);
  return Compare({.name = "STAT with 49 messages: µs"}, mailboxes.All(), [](const Contestant& one) {
    return Sample{StatSeconds(one.port) * 1e6, 0};
  });
}

}  // namespace

std::vector<Row> CompareMail(const std::string& program) {
  const Folder folder;
  Tarnwerk tarnwerk(program, folder);
  std::vector<Row> rows = {Receive(tarnwerk, folder)};
  Mailboxes mailboxes(tarnwerk, folder);
  rows.push_back(Collect(mailboxes));
  rows.push_back(Stat(mailboxes));
  return rows;
}

}  // namespace bench
