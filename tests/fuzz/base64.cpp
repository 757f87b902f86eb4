#include "mail/base64.h"

#include "tests/fuzz/fuzz_input.h"

// No more comes out than fits, and pieces of any size give the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  const std::string decoded = ModMail::DecodeBase64(text);
  fuzz::Require(decoded.size() <= (size + 3) / 4 * 3);
  fuzz::Require(fuzz::InPieces<ModMail::Base64Decoder>(text) == decoded);
  return 0;
}
