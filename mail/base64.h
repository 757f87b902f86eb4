#pragma once

// Base64 as received messages are decoded with. CR, LF and everything else outside the alphabet is
// skipped; a text may hold several padded pieces one after another, and of an incomplete last group
// the bytes that are whole count. Any bytes are accepted.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ModMail {

/// Decodes a text piece by piece, so that a large one takes no more memory than a piece and leaves
/// others their turn. Where the text is cut makes no difference.
class Base64Decoder {
 public:
  /// What the next `piece` of the text completes, possibly nothing.
  std::string Next(std::string_view piece);

  /// What the text ends with, once it was given whole. The decoder can then be used again.
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
