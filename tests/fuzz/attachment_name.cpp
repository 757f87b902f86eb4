#include "mail/attachment_name.h"

#include "tests/fuzz/fuzz_input.h"

// Whatever comes in, what comes out is one name in one folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string name =
      ModMail::HarmlessFileName(ModMail::AttachmentName(fuzz::Text(data, size)));
  fuzz::Require(!name.empty() && name.size() <= 255);
  fuzz::Require(name != "." && name != "..");
  fuzz::Require(name.find_first_of(std::string("/\\:\0\r\n", 6)) == std::string::npos);
  fuzz::Require(!name.ends_with('.') && !name.ends_with(' '));
  return 0;
}
