#include "mail/encoded_subject.h"

#include "tests/fuzz/fuzz_input.h"

// A text without an encoded word at its beginning stays as it is. The decoder is tried on one with
// such a beginning as well, which a fuzzer is slow to find.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(fuzz::Text(data, size));
  const std::string decoded = ModMail::DecodeEncodedSubject(text);
  fuzz::Require(ModMail::IsEncodedSubject(text) || decoded == text);
  ModMail::DecodeEncodedSubject("=?gb2312?B?" + text);
  return 0;
}
