#include "tests/fuzz/fuzz_input.h"
#include "web/request_intake.h"
#include "web/url_decoding.h"

namespace {

// A form's body only becomes shorter, but for a "?" of three bytes at most in each place.
void DecodeBody(std::string_view text) {
  try {
    static_cast<void>(ModWeb::ExtractPostBody(text));
    fuzz::Require(ModWeb::DecodeUrl(text).size() <= text.size());
  } catch (const ModWeb::BadRequest&) {
    fuzz::Require(!text.empty());
  }
}

}  // namespace

// A resource is never empty and lies in the request; a body is decoded or refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  for (const auto& resource : {ModWeb::CutGetResource(text), ModWeb::CutPostResource(text)}) {
    if (!resource) continue;
    fuzz::Require(!resource->empty() && text.find(*resource) != text.npos);
  }
  DecodeBody(text);
  return 0;
}
