#pragma once

// The command word of both protocols: the first four characters of an arrival, in upper case.
// Commands of three letters therefore match only an arrival that is nothing else.

#include <algorithm>
#include <string>
#include <string_view>

#include "mail/ascii_case.h"

namespace ModMail {

inline std::string CommandWord(std::string_view arrival) {
  std::string word(arrival.substr(0, 4));
  std::transform(word.begin(), word.end(), word.begin(), UpperAscii);
  return word;
}

}  // namespace ModMail
