#include "mail/message_structure.h"

#include <vector>

#include "tests/fuzz/fuzz_input.h"

namespace {

using ModMail::MessageStructure;

// Where its pieces begin and end, one after another.
std::vector<std::size_t> PlacesOf(const MessageStructure& message) {
  std::vector<std::size_t> places;
  const auto add = [&](const ModMail::Stretch& piece) {
    places.insert(places.end(), {piece.begin, piece.end});
  };
  add(message.subjectPlace);
  add(message.body);
  for (const ModMail::Attachment& attachment : message.attachments) add(attachment.text);
  return places;
}

}  // namespace

// Every piece lies in the message, the tables keep their bounds, and reading in steps finds the
// same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  const MessageStructure message = ModMail::ReadStructure(text);
  const std::vector<std::size_t> places = PlacesOf(message);
  for (std::size_t i = 0; i < places.size(); i += 2) {
    fuzz::Require(places[i] <= places[i + 1] && places[i + 1] <= size);
  }
  fuzz::Require(message.subject ==
                text.substr(message.subjectPlace.begin, message.subjectPlace.Size()));
  fuzz::Require(message.attachments.size() <= ModMail::MessageScanner::kMostAttachments);
  ModMail::MessageScanner scanner;
  for (std::size_t i = 0; i < size; i += 3) scanner.Take(text.substr(i, 3));
  const MessageStructure inSteps = scanner.End();
  fuzz::Require(PlacesOf(inSteps) == places && inSteps.subject == message.subject);
  fuzz::Require(inSteps.bodyEncoding == message.bodyEncoding);
  return 0;
}
