#include "mail/quoted_printable.h"

#include "tests/fuzz/fuzz_input.h"

// What is decoded is never longer than its text, and pieces of any size give the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  const std::string decoded = modQPDedode::DecodeQuotedPrintable(text);
  fuzz::Require(decoded.size() <= size);
  fuzz::Require(fuzz::InPieces<modQPDedode::QuotedPrintableDecoder>(text) == decoded);
  return 0;
}
