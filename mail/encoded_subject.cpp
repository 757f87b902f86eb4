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

// Removes the word that `text` begins with, and returns its encoded part.
std::string_view TakeWord(std::string_view& text) {
  text.remove_prefix(kWordBegin.size());
  // The search for the end stops at a blank: with many words that lack it, searching all that
  // follows would take quadratic time.
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

// The bytes of all words are joined before they are converted: some programs divide a character
// between two words.
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
