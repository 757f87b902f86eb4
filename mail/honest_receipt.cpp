#include "mail/honest_receipt.h"

#include <algorithm>

#include "mail/smtp_replies.h"

namespace ModMail {
namespace {

constexpr std::string_view kEnd = "\r\n.\r\n";
constexpr std::uint64_t kMiB = 1U << 20;

// Where the message ends in `arrival`, behind its last line; npos if it goes on. `tail` is what
// came last, as arrivals may divide the end.
std::size_t EndIn(std::string_view arrival, std::string_view tail) {
  const std::string border = std::string(tail).append(arrival.substr(0, kEnd.size()));
  std::size_t found = border.find(kEnd);
  if (found != std::string::npos) return found + kEnd.size() - tail.size();
  found = arrival.find(kEnd);
  return found == std::string_view::npos ? found : found + kEnd.size();
}

std::string TailOf(std::string_view tail, std::string_view part) {
  constexpr std::size_t kKept = kEnd.size() - 1;
  if (part.size() >= kKept) return std::string(part.substr(part.size() - kKept));
  const std::string all = std::string(tail).append(part);
  return all.substr(all.size() - std::min(all.size(), kKept));
}

}  // namespace

std::optional<std::string_view> HonestReceipt::WhyNoRecipient() const {
  const MailSessionState& state = store_.State();
  if (!state.MailRecipients.back().empty()) return smtp::kTooManyRecipients;
  std::int32_t totalSize = 0;
  // The last number is never used.
  const bool isFull = store_.CountMessages(totalSize) >= MailSessionState::kLargestNumber - 1;
  return isFull ? std::optional(smtp::kMailboxFull) : std::nullopt;
}

std::string_view HonestReceipt::Begin() {
  MailSessionState& state = store_.State();
  if (state.MailRecipients.front().empty()) return smtp::kNoRecipients;
  // As if a line had ended before the message: its first line may be the last.
  state.message = {.isInside = true, .tail = "\r\n"};
  return smtp::kEnterMail;
}

// The usual number, or the next one that no recipient's mailbox has.
void HonestReceipt::ChooseNumber() {
  MailSessionState& state = store_.State();
  std::int32_t totalSize = 0;
  int number = store_.CountMessages(totalSize) + 1;
  const auto isTaken = [&](const std::string& recipient) {
    return !recipient.empty() && store_.HasMessage(recipient, number);
  };
  while (number < MailSessionState::kLargestNumber &&
         std::any_of(state.MailRecipients.begin(), state.MailRecipients.end(), isTaken)) {
    ++number;
  }
  state.message.number = number;
  state.messageCount = static_cast<std::int16_t>(number - 1);
  if (number >= MailSessionState::kLargestNumber) state.message.refusal = smtp::kMailboxFull;
}

HonestReceipt::Progress HonestReceipt::Take(std::string_view arrival) {
  MessageInProgress& message = store_.State().message;
  Progress progress = {.isFirst = message.number == 0};
  if (progress.isFirst) ChooseNumber();
  const std::size_t end = EndIn(arrival, message.tail);
  const bool isLast = end != std::string_view::npos;
  const std::string_view part = arrival.substr(0, end);
  message.tail = TailOf(message.tail, part);
  message.size += part.size();
  const auto limit = static_cast<std::uint64_t>(protection_.Options().messageLimit);
  if (message.size > limit * kMiB) Refuse(smtp::kTooLarge);
  Store(part, isLast);
  progress.isStored = message.refusal.empty();
  if (!isLast) return progress;
  progress.rest = arrival.substr(end);
  Finish(progress);
  return progress;
}

void HonestReceipt::Store(std::string_view bytes, bool isLast) {
  const MessageInProgress& message = store_.State().message;
  if (!message.refusal.empty()) return;
  const bool isStored = !store_.HasLostSome(message.number) &&
                        store_.AppendToMailboxes(message.number, bytes, isLast) &&
                        (!isLast || store_.FlushMailboxes());
  if (!isStored) Refuse(smtp::kNotStored);
}

void HonestReceipt::Refuse(std::string_view reply) {
  MessageInProgress& message = store_.State().message;
  if (!message.refusal.empty()) return;
  message.refusal = reply;
  store_.RemoveFromMailboxes(message.number);
}

void HonestReceipt::Finish(Progress& progress) {
  MailSessionState& state = store_.State();
  const std::string_view refusal = state.message.refusal;
  progress.reply = refusal.empty() ? smtp::kSaved : refusal;
  std::vector<ReceivedMessage> messages = store_.TakeRecipients(state.message.number);
  if (refusal.empty()) progress.messages = std::move(messages);
  state.message = {};
}

void HonestReceipt::Abandon() {
  if (!IsInMessage()) return;
  if (store_.State().message.number != 0) Refuse(smtp::kNotStored);
  store_.State().message = {};
}

}  // namespace ModMail
