#pragma once

// Conversion between UTF-8, used inside the program, and the system code page
// (platform/code_page.h), used in protocol lines, INI files, logs, pages and messages.
//
// Bytes that are no text in their set stay as they are, so converting them there and back loses
// nothing. Characters that the other set lacks become "?".

#include <optional>
#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace text {

/// Received bytes as a text.
std::string FromSystem(std::string_view bytes);

/// A text as the bytes to send or write.
std::string ToSystem(std::string_view text);

/// The text of a double-byte character in GBK, or none if there is no such character.
std::optional<std::string> GbkCharacter(unsigned char lead, unsigned char trail);

/// Decodes GB2312 (as its superset GBK). Invalid sequences become "?".
std::string FromGbk(std::string_view bytes);

bool IsValidUtf8(std::string_view bytes);

/// Decodes bytes of a message whose header names their character set. If it names none, one that is
/// not known, or UTF-8 for what is something else, the set is detected as for files.
std::string FromNamed(std::string_view charset, std::string_view bytes);

/// Detects the character set of a text file, so that files made on another machine work: UTF-8 if
/// the bytes are valid UTF-8 and not all ASCII, else the system's set if they are valid in it, else
/// GBK.
platform::Charset CharsetOf(std::string_view fileBytes);

/// The content of a file to which programs with other sets may have appended lines: if no set fits
/// all of it, each line is in a set of its own. The line ends stay.
std::string DecodeLines(std::string_view fileBytes);

/// Converts `bytes` in `charset` to a text, and back. `lossless` receives whether it is a text and
/// the set has every character of it.
std::string Decode(platform::Charset charset, std::string_view bytes);
std::string Encode(platform::Charset charset, std::string_view text, bool* lossless = nullptr);

/// The bytes of a text file with that content: in the system's set, or in UTF-8 if that set lacks a
/// character or the result would be detected as another set.
std::string EncodeFile(std::string_view text);

/// The content of a text file, without its byte order mark.
std::string DecodeFile(std::string_view fileBytes);

}  // namespace text
