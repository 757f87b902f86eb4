#include "mail/quoted_printable.h"

#include <algorithm>

#include "text/code_page.h"

namespace modQPDedode {
namespace {

constexpr std::size_t kEscapeLength = 3;
constexpr std::uint8_t kFirstLeadByte = 127;  // not 128: 127 is held too

std::optional<std::uint8_t> Hex(char c) {
  if (c >= '0' && c <= '9') return static_cast<std::uint8_t>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<std::uint8_t>(c - 'A' + 10);
  return std::nullopt;
}

// Whether the escape that `rest` begins with is incomplete.
bool IsCut(std::string_view rest) { return rest.size() < kEscapeLength && rest != "=\n"; }

}  // namespace

std::string QuotedPrintableDecoder::Next(std::string_view piece) {
  const std::string joined = cut_.empty() ? std::string() : cut_ + std::string(piece);
  std::string_view rest = cut_.empty() ? piece : joined;
  cut_.clear();
  std::string decoded;
  while (!rest.empty()) {
    const std::size_t plain = std::min(rest.find('='), rest.size());
    decoded += rest.substr(0, plain);
    rest.remove_prefix(plain);
    if (rest.empty()) break;
    if (IsCut(rest)) {
      cut_ = rest;
      break;
    }
    TakeEscape(rest, decoded);
  }
  return decoded;
}

void QuotedPrintableDecoder::TakeEscape(std::string_view& rest, std::string& decoded) {
  if (rest.starts_with("=\n")) return rest.remove_prefix(2);
  const std::optional<std::uint8_t> high = Hex(rest[1]);
  const std::optional<std::uint8_t> low = Hex(rest[2]);
  rest.remove_prefix(kEscapeLength);
  if (high && low) TakeValue(static_cast<std::uint8_t>(*high * 16 + *low), decoded);
}

void QuotedPrintableDecoder::TakeValue(std::uint8_t value, std::string& decoded) {
  if (value < kFirstLeadByte) {
    decoded += static_cast<char>(value);
    lead_.reset();
  } else if (!lead_) {
    lead_ = value;
  } else {
    decoded += Character(*lead_, value);
    lead_.reset();
  }
}

const std::string& QuotedPrintableDecoder::Character(std::uint8_t lead, std::uint8_t trail) {
  const auto code = static_cast<std::uint16_t>(lead << 8 | trail);
  const auto [entry, isNew] = characters_.try_emplace(code);
  if (isNew) entry->second = text::ToSystem(text::GbkCharacter(lead, trail).value_or("?"));
  return entry->second;
}

std::string DecodeQuotedPrintable(std::string_view encoded) {
  return QuotedPrintableDecoder().Next(encoded);
}

}  // namespace modQPDedode
