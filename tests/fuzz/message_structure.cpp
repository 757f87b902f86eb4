#include "mail/message_structure.h"

#include <functional>

#include "tests/fuzz/fuzz_input.h"

namespace {

// Whether a piece lies in the message. Empty ones may lie anywhere.
bool IsWithin(std::string_view piece, std::string_view text) {
  if (piece.empty()) return true;
  const std::less_equal<> isNotBehind;
  return isNotBehind(text.data(), piece.data()) &&
         isNotBehind(piece.data() + piece.size(), text.data() + text.size());
}

void RequireSame(const ModMail::MessageStructure& left, const ModMail::MessageStructure& right) {
  fuzz::Require(left.subject == right.subject && left.body == right.body);
  fuzz::Require(left.bodyEncoding == right.bodyEncoding);
  fuzz::Require(left.attachments.size() == right.attachments.size());
}

}  // namespace

// Every piece lies in the message, the tables keep their bounds, and reading in steps finds the
// same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  const ModMail::MessageStructure message = ModMail::ReadStructure(text);
  fuzz::Require(IsWithin(message.subject, text) && IsWithin(message.body, text));
  fuzz::Require(message.attachments.size() <= ModMail::MessageScanner::kMostAttachments);
  for (const ModMail::Attachment& attachment : message.attachments) {
    fuzz::Require(IsWithin(attachment.name, text) && IsWithin(attachment.text, text));
  }
  ModMail::MessageScanner scanner(text);
  while (scanner.Step(1)) {
  }
  RequireSame(scanner.Take(), message);
  return 0;
}
