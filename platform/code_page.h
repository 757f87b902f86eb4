#pragma once

// The character sets of texts outside the program, one of which is the system's own. The operating
// system converts between the Chinese ones and UTF-8; text/code_page.h decides what is converted
// and when.

#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class Charset { kUtf8, kGbk, kGb18030 };

/// The system's own character set if it can represent Simplified Chinese, else UTF-8. Windows: the
/// ANSI code page; Linux: the character set of the locale's LC_CTYPE. Does not change while the
/// process runs.
Charset SystemCharset();

/// What becomes of a byte that is not part of a character: a "?", or nothing, it stays.
enum class Invalid { kMarked, kKept };

/// Converts `bytes` from `charset` (not UTF-8) to UTF-8. `lossless` receives whether every byte is
/// part of a character.
std::string ToUtf8(Charset charset, std::string_view bytes, bool* lossless = nullptr,
                   Invalid invalid = Invalid::kMarked);

/// Converts `bytes` from a set by its name in mail headers, such as "Big5", to UTF-8; each invalid
/// sequence becomes "?". None if the set is not known (platform/known_charsets.h) or the system
/// lacks it.
std::optional<std::string> NamedToUtf8(std::string_view charset, std::string_view bytes);

/// Converts UTF-8 `text` to `charset` (not UTF-8). Characters that the set lacks become "?";
/// `lossless` receives whether there were none.
std::string FromUtf8(Charset charset, std::string_view text, bool* lossless = nullptr);

}  // namespace platform
