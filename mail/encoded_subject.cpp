#include "mail/encoded_subject.h"

#include <algorithm>

#include "mail/ascii_case.h"
#include "mail/base64.h"
#include "text/code_page.h"

namespace ModMail {
namespace {

constexpr std::string_view kWordBegin = "=?gb2312?B?";
constexpr std::string_view kWordEnd = "?=";
constexpr std::string_view kBlanks = " \t\r\n";

// Takes the word that `text` begins with, and returns what it encodes.
std::string_view TakeWord(std::string_view& text) {
  text.remove_prefix(kWordBegin.size());
  // The blank first: looked for in all that follows, an end that none of many words has would take
  // time by the square of their number.
  const std::string_view unbroken = text.substr(0, text.find_first_of(kBlanks));
  const std::string_view word = unbroken.substr(0, unbroken.find(kWordEnd));
  text.remove_prefix(word.size());
  if (text.starts_with(kWordEnd)) text.remove_prefix(kWordEnd.size());
  return word;
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

}  // namespace

bool IsEncodedSubject(std::string_view text) { return StartsWithAscii(text, kWordBegin); }

// The bytes of all words are joined before they become a text: some programs cut a character in
// two.
std::string DecodeEncodedSubject(std::string_view encoded) {
  std::string bytes;
  for (std::string_view next = encoded; IsEncodedSubject(next);
       next = WithoutLeadingBlanks(encoded)) {
    encoded = next;
    bytes += DecodeBase64(TakeWord(encoded));
  }
  return text::FromGbk(bytes) + text::FromSystem(encoded);
}

}  // namespace ModMail
