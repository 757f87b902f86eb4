#pragma once

// Quoted-printable as received messages are decoded with. It reads double-byte characters of GB2312
// out of pairs of escapes, and is strict where others are not, because unpacked texts are known to
// look so:
//   "=" LF           joins two lines; "=" CR LF is an escape without digits, and is lost whole
//   "=" and no two   digits 0-9 A-F in upper case: the three bytes are lost
//   "=00" to "=7E"   that byte, and a lead byte held until then is dropped
//   "=7F" to "=FF"   is held as a lead byte, or completes the character of the one that is held
// Other bytes are themselves and leave a held lead byte waiting.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace modQPDedode {

/// Decodes a text piece by piece, so that a large one takes no more memory than a piece and leaves
/// others their turn. Where the text is cut makes no difference.
class QuotedPrintableDecoder {
 public:
  /// What the next `piece` of the text completes, in the system code page.
  std::string Next(std::string_view piece);

  /// What the text ends with, once it was given whole: nothing, for half an escape is lost.
  std::string End() { return {}; }

 private:
  void TakeEscape(std::string_view& rest, std::string& decoded);
  void TakeValue(std::uint8_t value, std::string& decoded);
  const std::string& Character(std::uint8_t lead, std::uint8_t trail);

  std::string cut_;  // the beginning of an escape that goes on in the next piece
  std::optional<std::uint8_t> lead_;
  std::unordered_map<std::uint16_t, std::string> characters_;  // asking the system is slow
};

std::string DecodeQuotedPrintable(std::string_view encoded);

}  // namespace modQPDedode
