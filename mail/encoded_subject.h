#pragma once

// Encoded words as subjects and attachment names are written with: "=?gb2312?B?" base64 "?=". Only
// this character set and encoding are known; all others stay as they are.

#include <string>
#include <string_view>

namespace ModMail {

/// Whether `text` begins with an encoded word that is decoded, in any case of its letters.
bool IsEncodedSubject(std::string_view text);

/// The text of a value that begins with an encoded word. Words that follow, with nothing but blanks
/// and line ends between, belong to it, since long subjects are cut into several; a word without
/// its "?=" reaches to the next blank. What comes behind is kept as it is.
std::string DecodeEncodedSubject(std::string_view encoded);

}  // namespace ModMail
