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

// Whether the file holds the end of its message, as those received by SMTP do.
bool HoldsEnd(StoredMessage& message) {
  constexpr std::string_view kEnd = "\r\n.\r\n";
  if (message.size < kEnd.size()) return false;
  std::array<char, kEnd.size()> last;
  std::error_code error;
  message.file.Seek(message.size - last.size(), error);
  const std::size_t size = error ? 0 : message.file.Read(last.data(), last.size(), error);
  if (!error) message.file.Seek(0, error);
  return !error && std::string_view(last.data(), size) == kEnd;
}

Pop3Outcome EndingOnce(Pop3Outcome outcome) {
  if (!outcome.message)
    return {
        .text = ReplyLine(pop3::kNoMessage), .retrieves = true, .user = std::move(outcome.user)};
  outcome.text = ReplyLine(std::string(pop3::kOkBlank) + std::to_string(outcome.message->size));
  outcome.endsOnce = true;
  if (!HoldsEnd(*outcome.message)) outcome.rest = "\r\n" + ReplyLine(pop3::kEnd);
  return outcome;
}

}  // namespace

// "TOP" matches only an arrival of three characters, and the command that resets is REST. Hence a
// TOP with arguments and a RSET are unknown.
const Pop3Interpreter::Command* Pop3Interpreter::Find(std::string_view word) const {
  using Self = Pop3Interpreter;
  static constexpr auto kCommands = std::to_array<Command>({
      {.word = "AUTH", .reply = pop3::kOk},
      {.word = "USER", .function = &Self::OnUser},
      {.word = "PASS", .function = &Self::OnPass},
      {.word = "STAT", .function = &Self::OnStat, .needsLogin = true},
      {.word = "LIST", .function = &Self::OnList, .needsLogin = true},
      {.word = "RETR", .function = &Self::OnRetr, .needsLogin = true},
      {.word = "DELE", .function = &Self::OnDele, .needsLogin = true},
      {.word = "NOOP", .reply = pop3::kOk},
      {.word = "APOP", .reply = pop3::kOk},
      {.word = "UIDL", .function = &Self::OnUidl, .needsLogin = true},
      {.word = "TOP", .reply = pop3::kOk, .needsLogin = true},
      {.word = "REST", .function = &Self::OnRest},
      {.word = "QUIT", .function = &Self::OnQuit},
      {.word = "CAPA", .reply = pop3::kCapabilities},
  });
  // In place of the same words above, where clients have to sign in. AUTH and APOP are refused: a
  // client must not think that it has signed in.
  static constexpr auto kSignInCommands = std::to_array<Command>({
      {.word = "USER", .function = &Self::OnUserName},
      {.word = "PASS", .function = &Self::OnPassword},
      {.word = "AUTH", .reply = pop3::kError},
      {.word = "APOP", .reply = pop3::kError},
      {.word = "CAPA", .reply = pop3::kSignInCapabilities},
  });
  const Command* command =
      protection_.WantsSignIn() ? core::FindCommand(kSignInCommands, word) : nullptr;
  return command == nullptr ? core::FindCommand(kCommands, word) : command;
}

Pop3Outcome Pop3Interpreter::Interpret(std::string_view arrival, Pop3Session& session) {
  const std::string text = CommandText(arrival);
  const Command* command = Find(CommandWord(text));
  if (command == nullptr) return {ReplyLine(pop3::kNothing)};
  if (!protection_.MayGive(command->needsLogin, session.login)) {
    return {ReplyLine(pop3::kNotSignedIn)};
  }
  if (command->function == nullptr) return {ReplyLine(command->reply)};
  const OwnState own(store_.State(), protection_.KeepsMailboxesApart() ? &session.state : nullptr);
  return (this->*command->function)({text, session});
}

// Session

Pop3Outcome Pop3Interpreter::OnUser(Request request) {
  return {ReplyLine(store_.MailboxExistsFromArgument(request.text) ? pop3::kOk : pop3::kNoAccount)};
}

Pop3Outcome Pop3Interpreter::OnPass(Request request) {
  return {ReplyLine(store_.CheckPassword(request.text) ? pop3::kOk : pop3::kError)};
}

Pop3Outcome Pop3Interpreter::OnRest(Request request) {
  store_.State().currentUser.clear();
  store_.State().messageCount = 0;
  request.session.login.End();
  return {ReplyLine(pop3::kOk)};
}

Pop3Outcome Pop3Interpreter::OnQuit(Request request) {
  Pop3Outcome outcome = OnRest(request);
  outcome.quit = true;
  return outcome;
}

// Where clients have to sign in

// Does not tell whether there is such a user. From now on the session has no mailbox.
Pop3Outcome Pop3Interpreter::OnUserName(Request request) {
  store_.State() = {};
  request.session.login.Begin(CommandArgument(request.text));
  return {ReplyLine(pop3::kOk)};
}

Pop3Outcome Pop3Interpreter::OnPassword(Request request) {
  Pop3Outcome outcome;
  outcome.password = CommandArgument(request.text).substr(0, core::kLongestPassword + 1);
  return outcome;
}

Pop3Outcome Pop3Interpreter::EndSignIn(Pop3Session& session, core::Accounts::Answer answer) {
  using Answer = core::Accounts::Answer;
  if (answer == Answer::kBusy) return {ReplyLine(pop3::kBusy)};
  if (answer == Answer::kWrong) return {ReplyLine(pop3::kWrongPassword)};
  session.state = {};
  session.state.currentUser = session.login.Name();
  return {ReplyLine(pop3::kOk)};
}

// Messages

Pop3Outcome Pop3Interpreter::OnStat(Request) {
  MailSessionState& state = store_.State();
  std::int32_t totalSize = 0;
  state.messageCount = store_.CountMessages(totalSize);
  return {ReplyLine(std::string(pop3::kOkBlank) + std::to_string(state.messageCount) + " " +
                    std::to_string(totalSize))};
}

// As many lines as the last count, whichever command made it, with the sizes of now.
Pop3Outcome Pop3Interpreter::OnList(Request) {
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

Pop3Outcome Pop3Interpreter::OnUidl(Request) {
  std::string lines = ReplyLine(pop3::kOkBlank);
  for (const std::string& id : store_.ListMessageIds()) lines += ReplyLine(id + " ");
  return {text::ToSystem(lines + ReplyLine(pop3::kEnd))};
}

// The size is that of the last listing, and is announced before the message is looked for. The end
// is sent twice although the message contains one: clients rely on it.
Pop3Outcome Pop3Interpreter::OnRetr(Request request) {
  const int number = MessageNumber(request.text);
  // Beyond the table of sizes.
  if (number > MailSessionState::kLargestNumber)
    throw NoMessageNumber(CommandArgument(request.text));
  const std::int32_t size = store_.State().messageSizes[static_cast<std::size_t>(number)];
  Pop3Outcome outcome = {ReplyLine(std::string(pop3::kOkBlank) + std::to_string(size))};
  outcome.retrieves = true;
  outcome.user = store_.State().currentUser;
  const bool isReadable = store_.ReadMessage(number, outcome.message);
  if (protection_.EndsMessagesOnce()) return EndingOnce(std::move(outcome));
  if (!isReadable) {
    outcome.text += ReplyLine(pop3::kUnreadable);
    return outcome;
  }
  outcome.rest = ReplyLine(pop3::kEnd) + ReplyLine(pop3::kEnd);
  return outcome;
}

Pop3Outcome Pop3Interpreter::OnDele(Request request) {
  const int number = MessageNumber(request.text);
  if (!CommandArgument(request.text).empty()) store_.DeleteMessage(number);
  return {ReplyLine(pop3::kOk)};
}

}  // namespace ModMail
