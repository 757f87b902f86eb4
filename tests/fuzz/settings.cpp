#include "settings/ini_text.h"
#include "tests/fuzz/fuzz_input.h"
#include "text/conversions.h"

// A value that was set is read back, whatever the file held, and setting it again changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  settings::IniText settings{std::string(fuzz::Text(data, size))};
  static_cast<void>(settings.Find("System", "AutoStartService"));
  settings.Set("System", "AutoStartService", "1");
  fuzz::Require(settings.Find("system", "AUTOSTARTSERVICE") == "1");
  const std::string once = settings.Bytes();
  settings.Set("System", "AutoStartService", "1");
  fuzz::Require(settings.Bytes() == once);

  const std::string text(fuzz::Text(data, size));
  static_cast<void>(text::ToBoolean(text));
  static_cast<void>(text::ToInt16(text));
  return 0;
}
