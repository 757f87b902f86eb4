#include "mail/attachment_name.h"
#include "mail/base64.h"
#include "mail/encoded_subject.h"
#include "mail/quoted_printable.h"
#include "mail/shown_subject.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

// The decoded text again, taken in pieces whose size the input's first byte says.
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

}  // namespace

// What is decoded is never longer than its text, pieces of any size give the same, a subject that
// is not encoded stays as it is, and an attachment's name is one name in one folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(fuzz::Text(data, size));
  const std::string base64 = ModMail::DecodeBase64(text);
  fuzz::Require(base64.size() <= (size + 3) / 4 * 3);
  fuzz::Require(InPieces<ModMail::Base64Decoder>(text) == base64);
  const std::string printable = modQPDedode::DecodeQuotedPrintable(text);
  fuzz::Require(printable.size() <= size);
  fuzz::Require(InPieces<modQPDedode::QuotedPrintableDecoder>(text) == printable);
  const std::string subject = ModMail::DecodeEncodedSubject(text);
  fuzz::Require(ModMail::IsEncodedSubject(text) || subject == text);
  // A beginning that a fuzzer is slow to find.
  ModMail::DecodeEncodedSubject("=?gb2312?B?" + text);
  fuzz::Require(ModMail::ShownSubject("Subject: =?utf-8?Q?" + text).size() <= 3 * (size + 11));
  const std::string name = ModMail::HarmlessFileName(ModMail::AttachmentName(text));
  fuzz::Require(!name.empty() && name.size() <= 255 && name != "." && name != "..");
  fuzz::Require(name.find_first_of(std::string("/\\:\0\r\n", 6)) == std::string::npos);
  fuzz::Require(!name.ends_with('.') && !name.ends_with(' '));
  return 0;
}
