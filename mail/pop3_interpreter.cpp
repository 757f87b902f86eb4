#include "mail/pop3_interpreter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "mail/command_word.h"
#include "mail/pop3_replies.h"
#include "text/code_page.h"
#include "text/conversions.h"
#include "text/printable_text.h"

namespace ModMail {
namespace {

enum class Command {
  kAccepted,
  kUser,
  kPass,
  kStat,
  kList,
  kRetr,
  kDele,
  kUidl,
  kRest,
  kQuit,
  kCapa,
  kUnknown,
};

// "TOP" is met only by an arrival of three characters, and the word for resetting is REST: a TOP
// with arguments and a RSET are unknown.
constexpr std::array<std::pair<std::string_view, Command>, 14> kCommands = {{
    {"AUTH", Command::kAccepted},
    {"USER", Command::kUser},
    {"PASS", Command::kPass},
    {"STAT", Command::kStat},
    {"LIST", Command::kList},
    {"RETR", Command::kRetr},
    {"DELE", Command::kDele},
    {"NOOP", Command::kAccepted},
    {"APOP", Command::kAccepted},
    {"UIDL", Command::kUidl},
    {"TOP", Command::kAccepted},
    {"REST", Command::kRest},
    {"QUIT", Command::kQuit},
    {"CAPA", Command::kCapa},
}};

Command CommandOf(std::string_view text) {
  const std::string word = CommandWord(text);
  const auto* const found = std::find_if(kCommands.begin(), kCommands.end(),
                                         [&](const auto& entry) { return entry.first == word; });
  return found == kCommands.end() ? Command::kUnknown : found->second;
}

MailFault NoMessageNumber(std::string_view argument) {
  return MailFault("no message number: " + text::Printable(argument, 80));
}

// 0 for a command without one.
int MessageNumber(std::string_view text) {
  const std::string_view argument = CommandArgument(text);
  if (argument.empty()) return 0;
  const std::optional<std::int16_t> number = text::ToInt16(argument);
  if (!number || *number < 0) throw NoMessageNumber(argument);
  return *number;
}

}  // namespace

std::string Line(std::string_view reply) { return std::string(reply) + "\r\n"; }

Pop3Outcome Pop3Interpreter::Interpret(std::string_view arrival) {
  const std::string text = CommandText(arrival);
  switch (CommandOf(text)) {
    case Command::kAccepted:
      return {Line(pop3::kOk)};
    case Command::kUser:
      return {Line(store_.MailboxExistsFromArgument(text) ? pop3::kOk : pop3::kNoAccount)};
    case Command::kPass:
      return {Line(store_.CheckPassword(text) ? pop3::kOk : pop3::kError)};
    case Command::kStat:
      return {Stat()};
    case Command::kList:
      return {List()};
    case Command::kRetr:
      return Retr(text);
    case Command::kDele:
      Dele(text);
      return {Line(pop3::kOk)};
    case Command::kUidl:
      return {Uidl()};
    case Command::kRest:
      Reset();
      return {Line(pop3::kOk)};
    case Command::kQuit:
      Reset();
      return {.text = Line(pop3::kOk), .quit = true};
    case Command::kCapa:
      return {Line(pop3::kCapabilities) + Line(pop3::kEnd)};
    case Command::kUnknown:
      break;
  }
  return {Line(pop3::kNothing)};
}

std::string Pop3Interpreter::Stat() {
  MailSessionState& state = store_.State();
  std::int32_t totalSize = 0;
  state.messageCount = store_.CountMessages(totalSize);
  return Line(std::string(pop3::kOkBlank) + std::to_string(state.messageCount) + " " +
              std::to_string(totalSize));
}

// As many lines as were counted last, by whichever command, with the sizes of what is there now.
std::string Pop3Interpreter::List() {
  MailSessionState& state = store_.State();
  store_.ListMessageSizes();
  if (state.messageCount > MailSessionState::kLargestNumber) {
    throw MailFault("more messages than can be listed");
  }
  std::string lines = Line(pop3::kOkBlank);
  for (state.cursor = 1; state.cursor <= state.messageCount; ++state.cursor) {
    const auto entry = static_cast<std::size_t>(state.cursor);
    lines += Line(std::to_string(entry) + " " + std::to_string(state.messageSizes[entry]));
  }
  return lines + Line(pop3::kEnd);
}

std::string Pop3Interpreter::Uidl() {
  std::string lines = Line(pop3::kOkBlank);
  for (const std::string& id : store_.ListMessageIds()) lines += Line(id + " ");
  return text::ToSystem(lines + Line(pop3::kEnd));
}

// The size is said before the message is looked for, as it was when messages were last listed. The
// end is said twice: the message brings its own, and this one's double is clients' to ignore.
Pop3Outcome Pop3Interpreter::Retr(std::string_view text) {
  const int number = MessageNumber(text);
  // Beyond the table of sizes.
  if (number > MailSessionState::kLargestNumber) throw NoMessageNumber(CommandArgument(text));
  const std::int32_t size = store_.State().messageSizes[static_cast<std::size_t>(number)];
  Pop3Outcome outcome = {Line(std::string(pop3::kOkBlank) + std::to_string(size))};
  if (!store_.ReadMessage(number, outcome.message)) {
    outcome.text += Line(pop3::kUnreadable);
    return outcome;
  }
  outcome.rest = Line(pop3::kEnd) + Line(pop3::kEnd);
  return outcome;
}

void Pop3Interpreter::Dele(std::string_view text) {
  const int number = MessageNumber(text);
  if (!CommandArgument(text).empty()) store_.DeleteMessage(number);
}

void Pop3Interpreter::Reset() {
  store_.State().currentUser.clear();
  store_.State().messageCount = 0;
}

}  // namespace ModMail
