#include "mail/smtp_interpreter.h"

#include <array>
#include <utility>

#include "mail/command_word.h"
#include "mail/smtp_replies.h"
#include "text/strings.h"

namespace ModMail {
namespace {

// Within one chunk only: an end that two arrivals share is not recognised, and a chunk whose last
// line ends in a full stop is taken for the end. No code page uses these bytes as half a character.
bool EndsMessage(std::string_view chunk) { return text::TrimBlanks(chunk).ends_with(".\r\n"); }

}  // namespace

// RSET is accepted like the others and clears nothing.
const SmtpInterpreter::Command* SmtpInterpreter::Find(std::string_view word) {
  using Self = SmtpInterpreter;
  static constexpr auto kCommands = std::to_array<Command>({
      {.word = "EHLO", .reply = smtp::kOk},
      {.word = "HELO", .reply = smtp::kOk},
      {.word = "NOOP", .reply = smtp::kOk},
      {.word = "RSET", .reply = smtp::kOk},
      {.word = "EXPN", .reply = smtp::kOk},
      {.word = "SEND", .reply = smtp::kOk},
      {.word = "SOML", .reply = smtp::kOk},
      {.word = "SAML", .reply = smtp::kOk},
      {.word = "TURN", .reply = smtp::kOk},
      {.word = "MAIL", .function = &Self::OnMail},
      {.word = "RCPT", .function = &Self::OnRcpt},
      {.word = "DATA", .function = &Self::OnData},
      {.word = "VRFY", .reply = smtp::kCannotVerify},
      {.word = "HELP", .reply = smtp::kHelp},
      {.word = "QUIT", .function = &Self::OnQuit},
  });
  return core::FindCommand(kCommands, word);
}

SmtpOutcome SmtpInterpreter::Interpret(std::string arrival) {
  MailSessionState& state = store_.State();
  state.lastChunk = std::move(arrival);
  if (honest_.IsInMessage()) return TakePart();
  const std::string text = CommandText(state.lastChunk);
  const Command* command = Find(CommandWord(text));
  if (command == nullptr) return TakeChunk();
  if (command->function == nullptr) return {command->reply};
  return (this->*command->function)(text);
}

bool SmtpInterpreter::IsChunk(std::string_view arrival) const {
  const MailSessionState& state = store_.State();
  if (honest_.IsWanted()) return honest_.IsInMessage();
  return Find(CommandWord(arrival)) == nullptr && !state.MailRecipients.front().empty() &&
         state.transferStage != TransferStage::kComplete;
}

// The sender must have an account here, too.
SmtpOutcome SmtpInterpreter::OnMail(std::string_view command) {
  return {store_.MailboxExistsFromAddress(command) ? smtp::kOk : smtp::kNoAccount};
}

SmtpOutcome SmtpInterpreter::OnRcpt(std::string_view command) {
  if (!store_.MailboxExistsFromAddress(command)) return {smtp::kNoAccount};
  if (honest_.IsWanted()) {
    if (const auto refusal = honest_.WhyNoRecipient()) return {*refusal};
  }
  StoreRecipient();
  return {smtp::kOk};
}

void SmtpInterpreter::StoreRecipient() {
  MailSessionState& state = store_.State();
  for (state.cursor = 0; state.cursor < MailSessionState::kRecipients; ++state.cursor) {
    std::string& entry = state.MailRecipients[static_cast<std::size_t>(state.cursor)];
    if (!entry.empty()) continue;
    entry = state.currentUser;
    return;
  }
  throw MailFault("no free entry for the recipient " + state.currentUser);
}

SmtpOutcome SmtpInterpreter::OnData(std::string_view) {
  if (honest_.IsWanted()) return {honest_.Begin()};
  store_.State().transferStage = TransferStage::kWaiting;
  return {smtp::kEnterMail};
}

SmtpOutcome SmtpInterpreter::TakePart() {
  HonestReceipt::Progress progress = honest_.Take(store_.State().lastChunk);
  return {
      .reply = progress.reply,
      .messages = std::move(progress.messages),
      .chunk = SmtpOutcome::Chunk{progress.isFirst, progress.reply.has_value(), progress.isStored},
      .rest = std::move(progress.rest)};
}

SmtpOutcome SmtpInterpreter::TakeChunk() {
  if (honest_.IsWanted()) return {smtp::kNothing};
  MailSessionState& state = store_.State();
  if (state.transferStage == TransferStage::kComplete) return {smtp::kNothing};
  const bool isFirst = state.transferStage == TransferStage::kWaiting;
  if (isFirst) {
    // Counted in one mailbox, that of the user named last; the number holds for all recipients.
    std::int32_t totalSize = 0;
    state.messageCount = store_.CountMessages(totalSize);
    state.transferStage = TransferStage::kReceiving;
  }
  // A failure makes no difference to the client: only the end of a message is ever answered.
  const bool isLast = EndsMessage(state.lastChunk);
  const int number = state.messageCount + 1;
  const bool isStored = store_.AppendToMailboxes(number, state.lastChunk, isLast) &&
                        number < MailSessionState::kLargestNumber;
  const SmtpOutcome::Chunk chunk = {isFirst, isLast, isStored};
  if (!isLast) return {.reply = std::nullopt, .chunk = chunk};
  store_.FlushMailboxes();
  state.transferStage = TransferStage::kComplete;
  return {.reply = smtp::kSaved, .chunk = chunk};
}

// Takes the recipients before the reply is sent: a session that begins meanwhile finds an empty
// list, and nothing that it adds is cleared.
SmtpOutcome SmtpInterpreter::OnQuit(std::string_view) {
  return {.reply = smtp::kGoodbye,
          .quit = true,
          .messages = store_.TakeRecipients(store_.State().messageCount + 1)};
}

}  // namespace ModMail
