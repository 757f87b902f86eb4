#pragma once

// Texts are UTF-8 inside the program. Here they cross to the outside: protocol lines, INI files,
// logs, pages and message texts are in the system code page (platform/code_page.h).
//
// Under UTF-8 the crossing changes nothing, and bytes that are no valid UTF-8 pass untouched. Under
// a Chinese code page what cannot be converted becomes "?".

#include <optional>
#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace text {

/// Received bytes as a text.
std::string FromSystem(std::string_view bytes);

/// A text as the bytes to send or write.
std::string ToSystem(std::string_view text);

/// The text of one double-byte character by its GBK code, or none if there is no such character.
std::optional<std::string> GbkCharacter(unsigned char lead, unsigned char trail);

/// Bytes in GB2312 (its GBK superset) as a text; what is no character becomes "?".
std::string FromGbk(std::string_view bytes);

bool IsValidUtf8(std::string_view bytes);

/// The set in which a text file of ours is written, so that files made on another machine work:
/// UTF-8 if its bytes are valid in that and not all ASCII, else the system's set if they are valid
/// there, else GBK.
platform::Charset CharsetOf(std::string_view fileBytes);

/// `bytes` in `charset` as a text, and back. With `lossless`, tells whether the set holds all of
/// it.
std::string Decode(platform::Charset charset, std::string_view bytes);
std::string Encode(platform::Charset charset, std::string_view text, bool* lossless = nullptr);

/// The bytes of a text file of ours with that text: in the system's set, or in UTF-8 where that set
/// could not hold the text or would be mistaken for another one.
std::string EncodeFile(std::string_view text);

/// The text of a whole file of ours, without a byte order mark.
std::string DecodeFile(std::string_view fileBytes);

}  // namespace text
