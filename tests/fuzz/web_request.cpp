#include "tests/fuzz/fuzz_input.h"
#include "web/bare/request_interpreter.h"
#include "web/url_decoding.h"

namespace {

class EmptySite final : public ModWeb::RequestInterpreter::Site {
  bool HasFile(const std::string&) const override { return false; }
};

}  // namespace

// A resource is cut out of the request, a file that is sent is named without a slash, and decoding
// makes no text longer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  ModWeb::WebOptions options;
  options.WebRights[0] = "1";
  options.AppOptions[1] = "1";
  ModWeb::WebSession session;
  const EmptySite site;
  const ModWeb::Decision decision =
      ModWeb::RequestInterpreter(site, options, session).Interpret(text);
  if (text.starts_with("POST")) fuzz::Require(text.find(session.CurrentResource) != text.npos);
  if (text.starts_with("GET")) fuzz::Require(decision.resource.find('/') == std::string::npos);
  try {
    fuzz::Require(ModWeb::DecodeUrl(text).size() <= text.size());
  } catch (const ModWeb::BadRequest&) {
    fuzz::Require(!text.empty());
  }
  return 0;
}
