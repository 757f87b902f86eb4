#include "core/manager_options.h"

#include "core/conversions.h"
#include "core/registry.h"
#include "core/settings_section.h"
#include "platform/text_case.h"

namespace core {
namespace {

constexpr std::string_view kSection = "System";
constexpr std::string_view kVersionKey =
    R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion)";

}  // namespace

StartOptions ReadStartOptions(const Program& program) {
  const SettingsSection settings(program, kSection);
  return {ToBoolean(settings.Text("AutoStartService")).value_or(false),
          ToBoolean(settings.Text("StartInTaskBar")).value_or(false)};
}

void WriteStartOptions(SettingsChange& change, const StartOptions& options) {
  const SectionChange settings = change.In(kSection);
  settings.Write("AutoStartService", CheckText(options.autoStartService));
  settings.Write("StartInTaskBar", CheckText(options.startInTaskBar));
}

std::string SystemVersionText() {
  try {
    return platform::UpperCase(Modreg::ReadText(kVersionKey, "Version"));
  } catch (const Modreg::Error&) {
    return {};
  }
}

bool NeedsRegistrationAsService(std::string_view versionText) {
  return versionText == "WINDOWS 2000" || versionText == "WINDOWS NT";
}

}  // namespace core
