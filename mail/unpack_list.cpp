#include "mail/unpack_list.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "files/files.h"
#include "files/missing.h"
#include "mail/mail_accounts.h"
#include "platform/system_message.h"

namespace ModMail {
namespace {

// More than a full queue with the longest names needs.
constexpr std::size_t kLargestFile = 4U << 20;

std::string ListFile(const settings::Program& program) { return program.File("unpack.lst"); }

// Removes a field and the tabulator behind it; none if there is no tabulator.
std::optional<std::string_view> TakeField(std::string_view& line) {
  const std::size_t tabulator = line.find('\t');
  if (tabulator == std::string_view::npos) return std::nullopt;
  const std::string_view field = line.substr(0, tabulator);
  line.remove_prefix(tabulator + 1);
  return field;
}

std::optional<int> MessageNumber(std::string_view text) {
  constexpr int kLargest = 32768;  // one more than can be counted
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  return isNumber && number > 0 && number <= kLargest ? std::optional(number) : std::nullopt;
}

// Accepts only what a QUIT can name, so the file cannot lead anywhere else.
std::optional<ReceivedMessage> MessageOf(std::string_view line) {
  const std::optional<std::string_view> numberText = TakeField(line);
  const std::optional<std::string_view> user = TakeField(line);
  if (!numberText || !user || user->empty() || !IsAccountName(*user)) return std::nullopt;
  const std::optional<int> number = MessageNumber(*numberText);
  if (!number) return std::nullopt;
  return ReceivedMessage{*number, std::string(*user), std::string(line)};
}

std::vector<ReceivedMessage> MessagesIn(std::string_view content, std::size_t& badLines) {
  std::vector<ReceivedMessage> messages;
  while (!content.empty()) {
    std::string_view line = content.substr(0, content.find('\n'));
    content.remove_prefix(std::min(line.size() + 1, content.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    std::optional<ReceivedMessage> message = MessageOf(line);
    if (message) {
      messages.push_back(*std::move(message));
    } else {
      ++badLines;
    }
  }
  return messages;
}

}  // namespace

bool SaveUnpackList(const settings::Program& program, const std::deque<ReceivedMessage>& messages) {
  std::string content;
  for (const ReceivedMessage& message : messages) {
    content +=
        std::to_string(message.number) + "\t" + message.user + "\t" + message.mailRoot + "\r\n";
  }
  const std::string path = ListFile(program);
  const std::error_code error = files::ReplaceContent(path, content);
  if (error) program.errors.LogError(path + ": " + platform::SystemMessage(error));
  return !error;
}

std::vector<ReceivedMessage> TakeUnpackList(const settings::Program& program) {
  const std::string path = ListFile(program);
  std::error_code error;
  const std::string content = files::ReadFile(path, error, kLargestFile);
  if (files::IsMissing(error)) return {};
  std::size_t badLines = 0;
  std::vector<ReceivedMessage> messages = MessagesIn(content, badLines);
  std::string fault = error ? platform::SystemMessage(error) : std::string();
  if (badLines > 0) fault = std::to_string(badLines) + " lines name no message";
  if (!fault.empty()) program.errors.LogError(path + ": " + fault);
  files::RemoveFile(path);
  return messages;
}

}  // namespace ModMail
