#pragma once

// Encoded words in subjects and attachment names: "=?gb2312?B?" base64 "?=". Only this character
// set and encoding are decoded; all others are left as they are.

#include <string>
#include <string_view>

namespace ModMail {

/// Whether `text` begins with an encoded word that can be decoded. Case does not matter.
bool IsEncodedSubject(std::string_view text);

/// The text of a value that begins with an encoded word. Long subjects are divided into several
/// words, so words separated by nothing but blanks and line ends are joined. A word without its
/// "?=" extends to the next blank. The rest of the value is kept as it is.
std::string DecodeEncodedSubject(std::string_view encoded);

}  // namespace ModMail
