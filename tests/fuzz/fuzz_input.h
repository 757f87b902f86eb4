#pragma once

// What a fuzzer is given, and the way it says that an answer is wrong.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fuzz {

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

inline void Require(bool condition) {
  if (!condition) std::abort();
}

/// The decoded text again, taken in pieces whose size the input's first byte says.
template <class Decoder>
std::string InPieces(std::string_view text) {
  const std::size_t size = text.empty() ? 1 : static_cast<unsigned char>(text[0]) % 16 + 1U;
  Decoder decoder;
  std::string pieces;
  for (; !text.empty(); text.remove_prefix(std::min(size, text.size()))) {
    pieces += decoder.Next(text.substr(0, size));
  }
  return pieces + decoder.End();
}

}  // namespace fuzz
