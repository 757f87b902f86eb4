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

/// Decodes a text piece by piece, so that a large one can be taken in turns with other work.
class Base64Decoder {
 public:
  /// `encoded` must outlive the decoder.
  explicit Base64Decoder(std::string_view encoded) : rest_(encoded) {}

  bool IsDone() const { return rest_.empty() && groupSize_ == 0; }

  /// What the next `count` bytes of the text decode to, possibly nothing.
  std::string Next(std::size_t count);

 private:
  void Take(unsigned char value, std::string& decoded);
  void EndGroup(std::string& decoded);

  std::string_view rest_;
  std::array<std::uint8_t, 4> group_ = {};
  std::size_t groupSize_ = 0;
  std::size_t padding_ = 0;
};

std::string DecodeBase64(std::string_view encoded);

}  // namespace ModMail
