#pragma once

// The Base64 decoder for received messages. It accepts any bytes: everything outside the alphabet,
// CR and LF included, is skipped; a text may consist of several padded pieces; and an incomplete
// last group yields its whole bytes.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ModMail {

/// Decodes a text piece by piece, so that a large text needs little memory and does not block the
/// loop. The result does not depend on where the text is cut.
class Base64Decoder {
 public:
  /// The bytes that the next `piece` of the text completes, possibly none.
  std::string Next(std::string_view piece);

  /// The last bytes, after the whole text was passed to Next. The decoder can then be used again.
  std::string End();

 private:
  void Take(unsigned char value, std::string& decoded);
  void EndGroup(std::string& decoded);

  std::array<std::uint8_t, 4> group_ = {};
  std::size_t groupSize_ = 0;
  std::size_t padding_ = 0;
};

std::string DecodeBase64(std::string_view encoded);

}  // namespace ModMail
