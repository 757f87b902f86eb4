#include "mail/quoted_printable.h"

#include <algorithm>

#include "core/code_page.h"

namespace modQPDedode {
namespace {

constexpr std::size_t kEscapeLength = 3;
constexpr std::uint8_t kFirstLeadByte = 127;  // not 128: 127 is held too

std::optional<std::uint8_t> Hex(char c) {
  if (c >= '0' && c <= '9') return static_cast<std::uint8_t>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<std::uint8_t>(c - 'A' + 10);
  return std::nullopt;
}

}  // namespace

std::string QuotedPrintableDecoder::Next(std::size_t count) {
  const std::size_t left = rest_.size() - std::min(count, rest_.size());
  std::string decoded;
  while (rest_.size() > left) {
    const std::size_t plain = std::min(rest_.find('='), rest_.size() - left);
    decoded += rest_.substr(0, plain);
    rest_.remove_prefix(plain);
    if (rest_.size() > left) TakeEscape(decoded);
  }
  return decoded;
}

void QuotedPrintableDecoder::TakeEscape(std::string& decoded) {
  const std::string_view escape = rest_.substr(0, kEscapeLength);
  if (escape.starts_with("=\n")) return rest_.remove_prefix(2);
  rest_.remove_prefix(escape.size());
  if (escape.size() < kEscapeLength) return;
  const std::optional<std::uint8_t> high = Hex(escape[1]);
  const std::optional<std::uint8_t> low = Hex(escape[2]);
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
  if (isNew) entry->second = core::ToSystem(core::GbkCharacter(lead, trail).value_or("?"));
  return entry->second;
}

std::string DecodeQuotedPrintable(std::string_view encoded) {
  return QuotedPrintableDecoder(encoded).Next(encoded.size());
}

}  // namespace modQPDedode
