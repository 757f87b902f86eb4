#pragma once

// What both protocols look at of an arrival.

#include <algorithm>
#include <string>
#include <string_view>

#include "mail/ascii_case.h"
#include "text/code_page.h"

namespace ModMail {

/// No command needs more. What stands behind is not looked at, so that commands of megabytes cost
/// no more than others.
inline constexpr std::size_t kLongestCommand = 65536;

/// The arrival as a text, as far as a command goes.
inline std::string CommandText(std::string_view arrival) {
  return text::FromSystem(arrival.substr(0, kLongestCommand));
}

/// The first four characters of an arrival, in upper case. Commands of three letters therefore
/// match only an arrival that is nothing else.
inline std::string CommandWord(std::string_view arrival) {
  std::string word(arrival.substr(0, 4));
  std::transform(word.begin(), word.end(), word.begin(), UpperAscii);
  return word;
}

}  // namespace ModMail
