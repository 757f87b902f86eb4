#include "platform/code_page.h"

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

#include <array>
#include <cerrno>
#include <memory>

#include "platform/known_charsets.h"
#include "platform/text_case.h"

namespace platform {
namespace {

// An iconv descriptor for one direction between two character sets.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (IsOpen()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Converts all of `input`. `instead` appends something in place of what cannot be converted, and
  // returns how many bytes that is.
  template <class Instead>
  std::string Run(std::string_view input, Instead instead, bool* lossless) {
    std::string output;
    bool clean = IsOpen();
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    while (IsOpen() && !input.empty()) {
      if (Step(input, output)) continue;
      clean = false;
      input.remove_prefix(std::min(input.size(), instead(input, output)));
    }
    if (lossless != nullptr) *lossless = clean;
    return output;
  }

  bool IsOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

 private:
  // Converts until the input or the buffer ends (true) or a sequence cannot be converted (false).
  bool Step(std::string_view& input, std::string& output) {
    std::array<char, 4096> buffer;
    char* in = const_cast<char*>(input.data());
    std::size_t inLeft = input.size();
    char* out = buffer.data();
    std::size_t outLeft = buffer.size();
    const bool failed =
        iconv(handle_, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1);
    const bool bad = failed && errno != E2BIG;
    output.append(buffer.data(), out);
    input.remove_prefix(input.size() - inLeft);
    return !bad;
  }

  iconv_t handle_;
};

const char* NameOf(Charset charset) { return charset == Charset::kGbk ? "GBK" : "GB18030"; }

struct Converters {
  explicit Converters(const char* charset) : toUtf8("UTF-8", charset), fromUtf8(charset, "UTF-8") {}
  Converter toUtf8;
  Converter fromUtf8;
};

// Opening a descriptor costs far more than converting a short text, and the decoders convert
// character by character. Never closed: the last log lines at exit still need them.
Converters& ConvertersOf(Charset charset) {
  static auto& gbk = *new Converters(NameOf(Charset::kGbk));
  static auto& gb18030 = *new Converters(NameOf(Charset::kGb18030));
  return charset == Charset::kGbk ? gbk : gb18030;
}

std::size_t KeepByte(std::string_view bytes, std::string& output) {
  output += bytes[0];
  return 1;
}

std::size_t MarkByte(std::string_view, std::string& output) {
  output += '?';
  return 1;
}

std::size_t MarkCharacter(std::string_view text, std::string& output) {
  output += '?';
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
    ++length;
  return length;
}

Charset DetectCharset() {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (locale == nullptr) return Charset::kUtf8;
  const std::string codeset = UpperCase(nl_langinfo_l(CODESET, locale));
  freelocale(locale);
  if (codeset == "GB18030") return Charset::kGb18030;
  if (codeset == "GBK" || codeset == "GB2312" || codeset == "CP936") return Charset::kGbk;
  return Charset::kUtf8;
}

}  // namespace

Charset SystemCharset() {
  static const Charset charset = DetectCharset();
  return charset;
}

std::string ToUtf8(Charset charset, std::string_view bytes, bool* lossless, Invalid invalid) {
  return ConvertersOf(charset).toUtf8.Run(bytes, invalid == Invalid::kKept ? KeepByte : MarkByte,
                                          lossless);
}

// A header can name a set a thousand times, so descriptors stay open.
std::optional<std::string> NamedToUtf8(std::string_view charset, std::string_view bytes) {
  static auto& converters = *new std::array<std::unique_ptr<Converter>, kKnownCharsets.size()>;
  const std::size_t index = IndexOfCharset(charset);
  if (index == kKnownCharsets.size()) return std::nullopt;
  std::unique_ptr<Converter>& converter = converters[index];
  if (!converter) {
    converter = std::make_unique<Converter>("UTF-8", kKnownCharsets[index].iconvName);
  }
  if (!converter->IsOpen()) return std::nullopt;
  return converter->Run(bytes, MarkByte, nullptr);
}

std::string FromUtf8(Charset charset, std::string_view text, bool* lossless) {
  return ConvertersOf(charset).fromUtf8.Run(text, MarkCharacter, lossless);
}

}  // namespace platform
