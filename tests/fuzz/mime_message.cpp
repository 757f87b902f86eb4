#include "mail/mime_message.h"

#include <vector>

#include "mail/attachment_risk.h"
#include "mail/header_fields.h"
#include "mail/html_text.h"
#include "mail/mailbox_view.h"
#include "mail/part_decoder.h"
#include "mail/shown_message.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

using ModMail::MimeMessage;
using ModMail::MimePart;

template <class Decoder>
std::string InPieces(std::string_view text) {
  Decoder decoder;
  std::string decoded;
  for (; !text.empty(); text.remove_prefix(std::min<std::size_t>(3, text.size()))) {
    decoded += decoder.Next(text.substr(0, 3));
  }
  return decoded;
}

// Every part lies in the file, before the next one, and has a name that is one in its folder.
void Check(const std::vector<MimeMessage>& messages, std::size_t size) {
  std::uint64_t end = 0;
  fuzz::Require(!messages.empty() && messages.size() <= ModMail::MimeScanner::kMostMessages);
  for (const MimeMessage& message : messages) {
    fuzz::Require(message.parts.size() <= ModMail::MimeScanner::kMostParts);
    for (const MimePart& part : message.parts) {
      fuzz::Require(end <= part.text.begin && part.text.begin <= part.text.end);
      end = part.text.end;
      const std::string name = ModMail::FileNameOf(part);
      fuzz::Require(!name.empty() && name.find_first_of("/\\:") == std::string::npos);
    }
  }
  fuzz::Require(end <= size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  const std::vector<MimeMessage> messages = ModMail::ReadMime(text);
  Check(messages, size);
  ModMail::MimeScanner scanner;
  for (std::size_t i = 0; i < size; i += 3) scanner.Take(text.substr(i, 3));
  const std::vector<MimeMessage> inSteps = scanner.End();
  fuzz::Require(inSteps.size() == messages.size());
  for (std::size_t i = 0; i < messages.size(); ++i) {
    fuzz::Require(inSteps[i].parts.size() == messages[i].parts.size());
  }
  fuzz::Require(ModMail::DotRemover().Next(text) == InPieces<ModMail::DotRemover>(text));
  fuzz::Require(ModMail::QuotedBytes().Next(text).size() <= size);
  fuzz::Require(ModMail::PrintableLines(text).size() <= 4 * size + 2);
  ModMail::TextOfHtml(text);
  ModMail::MailDate(text);
  ModMail::RiskOf(text);
  ModMail::NameInAddress(text);
  ModMail::HeaderParameter(text, "name");
  return 0;
}
