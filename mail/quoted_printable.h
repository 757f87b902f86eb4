#pragma once

// The quoted-printable decoder for received messages. It makes double-byte characters of GB2312 out
// of pairs of escapes, and is stricter than others, because users know unpacked texts that way:
//   "=" LF           joins two lines; "=" CR LF is an escape without digits, so all three are lost
//   "=" and two      characters that are not digits 0-9 A-F (upper case): all three are lost
//   "=00" to "=7E"   yields that byte and drops a lead byte that is held
//   "=7F" to "=FF"   is held as a lead byte, or completes the character of the lead byte held
// Other bytes are copied and leave a held lead byte held.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace modQPDedode {

/// Decodes a text piece by piece, so that a large text needs little memory and does not block the
/// loop. The result does not depend on where the text is cut.
class QuotedPrintableDecoder {
 public:
  /// The text that the next `piece` completes, in the system code page.
  std::string Next(std::string_view piece);

  /// The end of the text: always empty, since half an escape is lost.
  std::string End() { return {}; }

 private:
  void TakeEscape(std::string_view& rest, std::string& decoded);
  void TakeValue(std::uint8_t value, std::string& decoded);
  const std::string& Character(std::uint8_t lead, std::uint8_t trail);

  std::string cut_;  // the beginning of an escape that continues in the next piece
  std::optional<std::uint8_t> lead_;
  std::unordered_map<std::uint16_t, std::string> characters_;  // asking the system is slow
};

std::string DecodeQuotedPrintable(std::string_view encoded);

}  // namespace modQPDedode
