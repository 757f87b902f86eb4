#pragma once

// The character sets in which texts cross to the outside. The system has one of them as its own;
// the conversions between the Chinese ones and UTF-8 are the operating system's. What is converted
// when is decided in text/code_page.h.

#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class Charset { kUtf8, kGbk, kGb18030 };

/// The system's own character set if it can hold Simplified Chinese, else UTF-8. Windows: the ANSI
/// code page; Linux: the character set of the locale's LC_CTYPE. Constant while the process lives.
Charset SystemCharset();

/// `bytes` in `charset` (not UTF-8) as UTF-8; invalid sequences become "?".
/// `lossless` receives whether there were none.
std::string ToUtf8(Charset charset, std::string_view bytes, bool* lossless = nullptr);

/// UTF-8 `text` in `charset` (not UTF-8); characters that the set lacks become "?".
/// `lossless` receives whether there were none.
std::string FromUtf8(Charset charset, std::string_view text, bool* lossless = nullptr);

}  // namespace platform
