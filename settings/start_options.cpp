#include "settings/start_options.h"

#include "settings/section.h"
#include "text/conversions.h"

namespace settings {
namespace {

constexpr std::string_view kSection = "System";

}  // namespace

StartOptions ReadStartOptions(const Program& program) {
  const Section settings(program, kSection);
  return {text::ToBoolean(settings.Text("AutoStartService")).value_or(false),
          text::ToBoolean(settings.Text("StartInTaskBar")).value_or(false)};
}

void WriteStartOptions(Change& change, const StartOptions& options) {
  const SectionChange settings = change.In(kSection);
  settings.Write("AutoStartService", text::CheckText(options.autoStartService));
  settings.Write("StartInTaskBar", text::CheckText(options.startInTaskBar));
}

}  // namespace settings
