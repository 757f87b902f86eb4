#include "settings/optional_values.h"

#include "platform/text_case.h"
#include "settings/section.h"
#include "text/strings.h"

namespace settings {

bool WriteWhatIsNew(Change& change, const Program& program, std::string_view section,
                    std::span<const OptionalValue> values) {
  const Section file(program, section);
  bool isAnythingNew = false;
  for (const OptionalValue& value : values) {
    const std::string written = file.Text(value.key);
    const std::string_view said = text::TrimBlanks(written);
    const std::string_view former = said.empty() ? std::string_view(value.byDefault) : said;
    if (platform::UpperCase(former) == platform::UpperCase(value.wanted)) continue;
    change.In(section).Write(value.key, value.wanted);
    isAnythingNew = true;
  }
  return isAnythingNew;
}

}  // namespace settings
