#include "mail/smtp_interpreter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "mail/command_word.h"
#include "mail/smtp_replies.h"
#include "text/strings.h"

namespace ModMail {
namespace {

enum class Command { kAccepted, kMail, kRcpt, kData, kVrfy, kHelp, kQuit, kChunk };

// RSET is accepted like the others and clears nothing.
constexpr std::array<std::pair<std::string_view, Command>, 15> kCommands = {{
    {"EHLO", Command::kAccepted},
    {"HELO", Command::kAccepted},
    {"NOOP", Command::kAccepted},
    {"RSET", Command::kAccepted},
    {"EXPN", Command::kAccepted},
    {"SEND", Command::kAccepted},
    {"SOML", Command::kAccepted},
    {"SAML", Command::kAccepted},
    {"TURN", Command::kAccepted},
    {"MAIL", Command::kMail},
    {"RCPT", Command::kRcpt},
    {"DATA", Command::kData},
    {"VRFY", Command::kVrfy},
    {"HELP", Command::kHelp},
    {"QUIT", Command::kQuit},
}};

Command CommandOf(std::string_view text) {
  const std::string word = CommandWord(text);
  const auto* const found = std::find_if(kCommands.begin(), kCommands.end(),
                                         [&](const auto& entry) { return entry.first == word; });
  return found == kCommands.end() ? Command::kChunk : found->second;
}

// Looked for in one chunk only: an end that two arrivals share is not seen, and a chunk that ends
// in a line ending with a full stop is one. These bytes are no half of a character in any code
// page.
bool EndsMessage(std::string_view chunk) { return text::TrimBlanks(chunk).ends_with(".\r\n"); }

}  // namespace

SmtpOutcome SmtpInterpreter::Interpret(std::string arrival) {
  MailSessionState& state = store_.State();
  state.lastChunk = std::move(arrival);
  const std::string text = CommandText(state.lastChunk);
  switch (CommandOf(text)) {
    case Command::kAccepted:
      return {smtp::kOk};
    case Command::kMail:
      // The sender must have an account here, too.
      return {store_.MailboxExistsFromAddress(text) ? smtp::kOk : smtp::kNoAccount};
    case Command::kRcpt:
      if (!store_.MailboxExistsFromAddress(text)) return {smtp::kNoAccount};
      return {StoreRecipient()};
    case Command::kData:
      state.transferStage = TransferStage::kWaiting;
      return {smtp::kEnterMail};
    case Command::kVrfy:
      return {smtp::kCannotVerify};
    case Command::kHelp:
      return {smtp::kHelp};
    case Command::kQuit:
      return Quit();
    case Command::kChunk:
      return {TakeChunk()};
  }
  return {};
}

std::optional<std::string_view> SmtpInterpreter::StoreRecipient() {
  MailSessionState& state = store_.State();
  for (state.cursor = 0; state.cursor < MailSessionState::kRecipients; ++state.cursor) {
    std::string& entry = state.MailRecipients[static_cast<std::size_t>(state.cursor)];
    if (!entry.empty()) continue;
    entry = state.currentUser;
    return smtp::kOk;
  }
  throw MailFault("no free entry for the recipient " + state.currentUser);
}

std::optional<std::string_view> SmtpInterpreter::TakeChunk() {
  MailSessionState& state = store_.State();
  if (state.transferStage == TransferStage::kComplete) return smtp::kNothing;
  if (state.transferStage == TransferStage::kWaiting) {
    // Of one mailbox, that of the user named last; the number holds for all recipients.
    std::int32_t totalSize = 0;
    state.messageCount = store_.CountMessages(totalSize);
    state.transferStage = TransferStage::kReceiving;
  }
  // A failure makes no difference to the client: only the end of a message is ever answered.
  const bool isLast = EndsMessage(state.lastChunk);
  store_.AppendToMailboxes(state.messageCount + 1, state.lastChunk, isLast);
  if (!isLast) return std::nullopt;
  store_.FlushMailboxes();
  state.transferStage = TransferStage::kComplete;
  return smtp::kSaved;
}

SmtpOutcome SmtpInterpreter::Quit() {
  SmtpOutcome outcome = {smtp::kGoodbye};
  outcome.quit = true;
  // Together with the reply, so that a session which begins meanwhile finds an empty list and has
  // nothing of its own cleared.
  outcome.messages = store_.TakeRecipients(store_.State().messageCount + 1);
  return outcome;
}

}  // namespace ModMail
