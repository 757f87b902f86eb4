#include "mail/pop3_interpreter.h"

#include <array>

#include "mail/command_word.h"
#include "mail/pop3_replies.h"
#include "mail/reply_line.h"
#include "text/code_page.h"
#include "text/conversions.h"
#include "text/printable_text.h"

namespace ModMail {
namespace {

MailFault NoMessageNumber(std::string_view argument) {
  return MailFault("no message number: " + text::Printable(argument, 80));
}

// 0 for a command without one.
int MessageNumber(std::string_view command) {
  const std::string_view argument = CommandArgument(command);
  if (argument.empty()) return 0;
  const std::optional<std::int16_t> number = text::ToInt16(argument);
  if (!number || *number < 0) throw NoMessageNumber(argument);
  return *number;
}

}  // namespace

// "TOP" matches only an arrival of three characters, and the command that resets is REST. Hence a
// TOP with arguments and a RSET are unknown.
const Pop3Interpreter::Command* Pop3Interpreter::Find(std::string_view word) {
  using Self = Pop3Interpreter;
  static constexpr auto kCommands = std::to_array<Command>({
      {.word = "AUTH", .reply = pop3::kOk},
      {.word = "USER", .function = &Self::OnUser},
      {.word = "PASS", .function = &Self::OnPass},
      {.word = "STAT", .function = &Self::OnStat},
      {.word = "LIST", .function = &Self::OnList},
      {.word = "RETR", .function = &Self::OnRetr},
      {.word = "DELE", .function = &Self::OnDele},
      {.word = "NOOP", .reply = pop3::kOk},
      {.word = "APOP", .reply = pop3::kOk},
      {.word = "UIDL", .function = &Self::OnUidl},
      {.word = "TOP", .reply = pop3::kOk},
      {.word = "REST", .function = &Self::OnRest},
      {.word = "QUIT", .function = &Self::OnQuit},
      {.word = "CAPA", .reply = pop3::kCapabilities},
  });
  return core::FindCommand(kCommands, word);
}

Pop3Outcome Pop3Interpreter::Interpret(std::string_view arrival) {
  const std::string text = CommandText(arrival);
  const Command* command = Find(CommandWord(text));
  if (command == nullptr) return {ReplyLine(pop3::kNothing)};
  if (command->function == nullptr) return {ReplyLine(command->reply)};
  return (this->*command->function)(text);
}

// Session

Pop3Outcome Pop3Interpreter::OnUser(std::string_view command) {
  return {ReplyLine(store_.MailboxExistsFromArgument(command) ? pop3::kOk : pop3::kNoAccount)};
}

Pop3Outcome Pop3Interpreter::OnPass(std::string_view command) {
  return {ReplyLine(store_.CheckPassword(command) ? pop3::kOk : pop3::kError)};
}

Pop3Outcome Pop3Interpreter::OnRest(std::string_view) {
  store_.State().currentUser.clear();
  store_.State().messageCount = 0;
  return {ReplyLine(pop3::kOk)};
}

Pop3Outcome Pop3Interpreter::OnQuit(std::string_view command) {
  Pop3Outcome outcome = OnRest(command);
  outcome.quit = true;
  return outcome;
}

// Messages

Pop3Outcome Pop3Interpreter::OnStat(std::string_view) {
  MailSessionState& state = store_.State();
  std::int32_t totalSize = 0;
  state.messageCount = store_.CountMessages(totalSize);
  return {ReplyLine(std::string(pop3::kOkBlank) + std::to_string(state.messageCount) + " " +
                    std::to_string(totalSize))};
}

// As many lines as the last count, whichever command made it, with the sizes of now.
Pop3Outcome Pop3Interpreter::OnList(std::string_view) {
  MailSessionState& state = store_.State();
  store_.ListMessageSizes();
  if (state.messageCount > MailSessionState::kLargestNumber) {
    throw MailFault("more messages than can be listed");
  }
  std::string lines = ReplyLine(pop3::kOkBlank);
  for (state.cursor = 1; state.cursor <= state.messageCount; ++state.cursor) {
    const auto entry = static_cast<std::size_t>(state.cursor);
    lines += ReplyLine(std::to_string(entry) + " " + std::to_string(state.messageSizes[entry]));
  }
  return {lines + ReplyLine(pop3::kEnd)};
}

Pop3Outcome Pop3Interpreter::OnUidl(std::string_view) {
  std::string lines = ReplyLine(pop3::kOkBlank);
  for (const std::string& id : store_.ListMessageIds()) lines += ReplyLine(id + " ");
  return {text::ToSystem(lines + ReplyLine(pop3::kEnd))};
}

// The size is that of the last listing, and is announced before the message is looked for. The end
// is sent twice although the message contains one: clients rely on it.
Pop3Outcome Pop3Interpreter::OnRetr(std::string_view command) {
  const int number = MessageNumber(command);
  // Beyond the table of sizes.
  if (number > MailSessionState::kLargestNumber) throw NoMessageNumber(CommandArgument(command));
  const std::int32_t size = store_.State().messageSizes[static_cast<std::size_t>(number)];
  Pop3Outcome outcome = {ReplyLine(std::string(pop3::kOkBlank) + std::to_string(size))};
  outcome.retrieves = true;
  if (!store_.ReadMessage(number, outcome.message)) {
    outcome.text += ReplyLine(pop3::kUnreadable);
    return outcome;
  }
  outcome.rest = ReplyLine(pop3::kEnd) + ReplyLine(pop3::kEnd);
  return outcome;
}

Pop3Outcome Pop3Interpreter::OnDele(std::string_view command) {
  const int number = MessageNumber(command);
  if (!CommandArgument(command).empty()) store_.DeleteMessage(number);
  return {ReplyLine(pop3::kOk)};
}

}  // namespace ModMail
