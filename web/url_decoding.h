#pragma once

// Turns the body of a POST request into what a CGI program reads. Pure functions on bytes: what a
// client sent is passed on as it is, whether or not it is text, and only escapes become characters
// of the system code page.

#include <stdexcept>
#include <string>
#include <string_view>

namespace ModWeb {

/// Thrown for a malformed request, which gets no reply.
class BadRequest : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Replaces "+" by a blank and escapes by characters. Two escapes in a row are one double-byte
/// character of GB2312, unless the first is one of `:/().,;%`. A code that is no character becomes
/// "?". Throws BadRequest at a "%" that is not followed by two hexadecimal digits.
std::string DecodeUrl(std::string_view bytes);

/// The decoded body of a POST request: as many of its last bytes as the first
/// "Content-Length: " says. Without a length, or with one of 0 or less, the whole request, not
/// decoded. Throws BadRequest if the length is no 16-bit number or an escape is malformed.
std::string ExtractPostBody(std::string_view request);

}  // namespace ModWeb
