#pragma once

// What a form sends, as the text that a CGI program reads. Pure functions on texts.

#include <stdexcept>
#include <string>
#include <string_view>

namespace ModWeb {

/// A request that cannot be made sense of. It ends the request without a reply.
class BadRequest : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Replaces "+" by a blank and escapes by characters: two escapes in a row are one double-byte
/// character of GB2312, unless the first is one of `:/().,;%`. A code that is no character becomes
/// "?". Throws BadRequest at a "%" without two hexadecimal digits behind it.
std::string DecodeUrl(std::string_view text);

/// The decoded body of a POST request: its last characters, as many as the first "Content-Length: "
/// says. Without one, or with one of 0 or less, the whole request, undecoded. Throws BadRequest if
/// the length is no 16-bit number or an escape is bad.
std::string ExtractPostBody(std::string_view requestText);

}  // namespace ModWeb
