#include "mail/message_structure.h"

#include "tests/fuzz/fuzz_input.h"

namespace {

using ModMail::MessageStructure;
using ModMail::Stretch;

void RequireWithin(const Stretch& piece, std::size_t size) {
  fuzz::Require(piece.begin <= piece.end && piece.end <= size);
}

void RequireSame(const Stretch& left, const Stretch& right) {
  fuzz::Require(left.begin == right.begin && left.end == right.end);
}

void RequireSame(const MessageStructure& left, const MessageStructure& right) {
  RequireSame(left.subjectPlace, right.subjectPlace);
  RequireSame(left.body, right.body);
  fuzz::Require(left.subject == right.subject && left.bodyEncoding == right.bodyEncoding);
  fuzz::Require(left.attachments.size() == right.attachments.size());
  for (std::size_t i = 0; i < left.attachments.size(); ++i) {
    RequireSame(left.attachments[i].text, right.attachments[i].text);
  }
}

}  // namespace

// Every piece lies in the message, the tables keep their bounds, and reading in steps finds the
// same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  const MessageStructure message = ModMail::ReadStructure(text);
  RequireWithin(message.body, size);
  RequireWithin(message.subjectPlace, size);
  fuzz::Require(message.subject ==
                text.substr(message.subjectPlace.begin, message.subjectPlace.Size()));
  fuzz::Require(message.attachments.size() <= ModMail::MessageScanner::kMostAttachments);
  for (const ModMail::Attachment& attachment : message.attachments) {
    RequireWithin(attachment.text, size);
  }
  ModMail::MessageScanner scanner;
  for (std::size_t i = 0; i < size; i += 3) scanner.Take(text.substr(i, 3));
  RequireSame(scanner.End(), message);
  return 0;
}
