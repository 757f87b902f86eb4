#include "mail/attachment_name.h"

#include <algorithm>
#include <array>

#include "mail/ascii_case.h"
#include "mail/encoded_subject.h"
#include "mail/whole_file.h"
#include "text/code_page.h"
#include "text/file_name.h"
#include "text/utf8.h"

namespace ModMail {
namespace {

// In bytes of UTF-8. Every file system takes 255, and some of our names get a suffix.
constexpr std::size_t kLongestName = 200;
constexpr std::size_t kLongestExtension = 20;

bool IsDeviceName(std::string_view name) {
  constexpr std::array<std::string_view, 7> kDevices = {"CON",     "PRN",    "AUX",   "NUL",
                                                        "CONOUT$", "CONIN$", "CLOCK$"};
  std::string_view stem = name.substr(0, name.find('.'));
  while (stem.ends_with(' ')) stem.remove_suffix(1);
  const auto isStem = [stem](std::string_view device) { return EqualAscii(stem, device); };
  if (std::any_of(kDevices.begin(), kDevices.end(), isStem)) return true;
  // The digit of a numbered device may be a superscript, which takes two bytes.
  const bool numbered = StartsWithAscii(stem, "COM") || StartsWithAscii(stem, "LPT");
  const std::string_view digit = stem.substr(std::min<std::size_t>(stem.size(), 3));
  const bool superscript = digit == "\xC2\xB9" || digit == "\xC2\xB2" || digit == "\xC2\xB3";
  return numbered && (superscript || (digit.size() == 1 && digit[0] >= '0' && digit[0] <= '9'));
}

std::string_view WithoutEnd(std::string_view name) {
  const std::size_t last = name.find_last_not_of(". ");
  return last == std::string_view::npos ? std::string_view() : name.substr(0, last + 1);
}

// At most `length` bytes of `text`, in whole characters.
std::string_view Cut(std::string_view text, std::size_t length) {
  if (text.size() <= length) return text;
  while (length > 0 && text::IsContinuation(text[length])) --length;
  return text.substr(0, length);
}

std::string Shortened(std::string_view name) {
  if (name.size() <= kLongestName) return std::string(name);
  const std::size_t dot = std::min(name.rfind('.'), name.size());
  std::string_view extension = name.substr(dot);
  if (extension.size() > kLongestExtension) extension = {};
  const std::string_view stem = name.substr(0, name.size() - extension.size());
  return std::string(Cut(stem, kLongestName - extension.size())) + std::string(extension);
}

}  // namespace

std::string AttachmentName(std::string_view value) {
  if (IsEncodedSubject(value)) return DecodeEncodedSubject(value);
  return text::Decode(text::CharsetOf(value), value);
}

std::string HarmlessFileName(std::string_view name) {
  std::string harmless(name);
  std::replace_if(harmless.begin(), harmless.end(), text::IsForbiddenInFileNames, '_');
  harmless = WithoutEnd(Shortened(WithoutEnd(harmless)));
  if (harmless.empty()) return "_";
  const bool isTaken = IsDeviceName(harmless) || EqualAscii(harmless, kUnfinishedName);
  return isTaken ? "_" + harmless : harmless;
}

}  // namespace ModMail
