#include "ftp/command_text.h"

#include <algorithm>

#include "platform/text_case.h"
#include "text/code_page.h"

namespace ModFtp {
namespace {

constexpr std::size_t kShortText = 7;

std::size_t SequenceLength(unsigned char lead) {
  if (lead >= 0xF0) return 4;
  if (lead >= 0xE0) return 3;
  return lead >= 0xC0 ? 2 : 1;
}

// The bytes of the first character. `text` must not be empty.
std::size_t CharacterLength(std::string_view text) {
  const std::size_t length = SequenceLength(static_cast<unsigned char>(text.front()));
  if (length == 1 || length > text.size()) return 1;
  return text::IsValidUtf8(text.substr(0, length)) ? length : 1;
}

}  // namespace

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(CharacterLength(text));
  return count;
}

std::string CommandWord(std::string_view text) {
  const std::string_view separator = CharacterCount(text) < kShortText ? "\r\n" : " ";
  const std::size_t end = text.find(separator);
  if (end == std::string_view::npos) return {};
  return platform::UpperCase(text.substr(0, end));
}

std::string_view FromPosition(std::string_view text, std::size_t position) {
  for (std::size_t i = 1; i < position && !text.empty(); ++i) {
    text.remove_prefix(CharacterLength(text));
  }
  return text;
}

std::optional<std::string> WithoutLineEnd(std::string_view text) {
  constexpr std::size_t kLineEnd = 2;
  const std::size_t count = CharacterCount(text);
  if (count < kLineEnd) return std::nullopt;
  const std::string_view lineEnd = FromPosition(text, count - kLineEnd + 1);
  return std::string(text.substr(0, text.size() - lineEnd.size()));
}

std::optional<std::string> CutArgument(std::string_view text, std::size_t position) {
  return WithoutLineEnd(FromPosition(text, position));
}

std::string CutTransferType(std::string_view text) {
  const std::string type(FromPosition(text, kAfterFourLetters).substr(0, 1));
  const std::string upper = platform::UpperCase(type);
  const bool known = upper == "A" || upper == "E" || upper == "I" || upper == "L";
  return known ? type : "A";
}

std::optional<std::string> CutRestart(std::string_view text) {
  // Counts the line end: one digit and CR LF.
  constexpr std::size_t kShortest = 3;
  const std::string_view offset = FromPosition(text, kAfterFourLetters);
  if (CharacterCount(offset) < kShortest) return std::nullopt;
  return WithoutLineEnd(offset);
}

bool AsksForHelp(std::string_view text) {
  constexpr std::string_view kHelp = "HELP";
  const std::string_view word = FromPosition(text, kAfterFourLetters).substr(0, kHelp.size());
  return platform::UpperCase(word) == kHelp;
}

}  // namespace ModFtp
