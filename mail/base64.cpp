#include "mail/base64.h"

namespace ModMail {
namespace {

constexpr std::uint8_t kPadding = 64;
constexpr std::uint8_t kSkipped = 128;

constexpr std::array<std::uint8_t, 256> MakeValues() {
  constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::array<std::uint8_t, 256> values = {};
  for (std::uint8_t& value : values) value = kSkipped;
  for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
    values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
  }
  values['='] = kPadding;
  return values;
}

constexpr std::array<std::uint8_t, 256> kValues = MakeValues();

struct Quad {
  explicit Quad(const char* text)
      : c0(ValueOf(text[0])), c1(ValueOf(text[1])), c2(ValueOf(text[2])), c3(ValueOf(text[3])) {}

  static std::uint8_t ValueOf(char c) { return kValues[static_cast<unsigned char>(c)]; }
  bool IsPlain() const { return (c0 | c1 | c2 | c3) < kPadding; }
  void Write(char* out) const {
    out[0] = static_cast<char>(c0 << 2 | c1 >> 4);
    out[1] = static_cast<char>(c1 << 4 | c2 >> 2);
    out[2] = static_cast<char>(c2 << 6 | c3);
  }

  std::uint8_t c0, c1, c2, c3;
};

// Decodes whole groups without padding or line ends, which make up nearly all of any text. Returns
// their length in `text`.
std::size_t DecodePlainRun(std::string_view text, std::string& decoded) {
  const std::size_t before = decoded.size();
  decoded.resize(before + text.size() / 4 * 3);
  char* out = decoded.data() + before;
  const char* in = text.data();
  const char* const end = in + text.size() / 4 * 4;
  for (; in != end; in += 4, out += 3) {
    const Quad quad(in);
    if (!quad.IsPlain()) break;
    quad.Write(out);
  }
  decoded.resize(static_cast<std::size_t>(out - decoded.data()));
  return static_cast<std::size_t>(in - text.data());
}

}  // namespace

std::string Base64Decoder::Next(std::string_view piece) {
  constexpr std::size_t kRun = 80;  // about a line, so that little is resized in vain
  std::string decoded;
  decoded.reserve(piece.size() / 4 * 3 + kRun);
  while (!piece.empty()) {
    if (groupSize_ == 0) piece.remove_prefix(DecodePlainRun(piece.substr(0, kRun), decoded));
    // A line end, or a group divided by one: up to where whole groups can begin again.
    for (bool isBetween = false; !isBetween && !piece.empty(); isBetween = groupSize_ == 0) {
      Take(static_cast<unsigned char>(piece.front()), decoded);
      piece.remove_prefix(1);
    }
  }
  return decoded;
}

std::string Base64Decoder::End() {
  std::string decoded;
  EndGroup(decoded);
  return decoded;
}

void Base64Decoder::Take(unsigned char c, std::string& decoded) {
  const std::uint8_t value = kValues[c];
  if (value == kSkipped) return;
  if (value == kPadding) ++padding_;
  group_[groupSize_++] = value == kPadding ? 0 : value;
  if (groupSize_ == group_.size()) EndGroup(decoded);
}

// The missing characters of an incomplete group count as padding.
void Base64Decoder::EndGroup(std::string& decoded) {
  padding_ += group_.size() - groupSize_;
  const auto [c0, c1, c2, c3] = group_;
  const std::array<char, 3> bytes = {static_cast<char>(c0 << 2 | c1 >> 4),
                                     static_cast<char>(c1 << 4 | c2 >> 2),
                                     static_cast<char>(c2 << 6 | c3)};
  if (padding_ < bytes.size()) decoded.append(bytes.data(), bytes.size() - padding_);
  group_ = {};
  groupSize_ = 0;
  padding_ = 0;
}

std::string DecodeBase64(std::string_view encoded) {
  Base64Decoder decoder;
  std::string decoded = decoder.Next(encoded);
  return decoded + decoder.End();
}

}  // namespace ModMail
