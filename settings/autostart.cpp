#include "settings/autostart.h"

#include "platform/login_entry.h"
#include "platform/native_path.h"
#include "platform/system_message.h"
#include "platform/text_case.h"
#include "settings/registry.h"

namespace settings {
namespace {

constexpr const char* kRunKey = R"(Software\Microsoft\Windows\CurrentVersion\Run)";
constexpr std::string_view kVersionKey =
    R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion)";

void WriteRunValue(const Program& program, bool starts) {
  const std::string value = starts ? platform::PathTextForUser(program.ExecutableFile()) : "";
  Modreg::Key key = Modreg::CreateKey(Modreg::Root::kLocalMachine, kRunKey);
  Modreg::SetText(key, program.executable, value);
}

}  // namespace

bool StartsWithSystem(const Program& program) {
  try {
    const Modreg::Key key = Modreg::OpenKey(Modreg::Root::kLocalMachine, kRunKey);
    return !Modreg::QueryText(key, program.executable).empty() &&
           platform::HasLoginEntry(program.executable);
  } catch (const Modreg::Error&) {
    return false;
  }
}

bool SetStartsWithSystem(const Program& program, bool starts) {
  try {
    WriteRunValue(program, starts);
  } catch (const Modreg::Error& error) {
    program.errors.LogError(error.what());
    return false;
  }
  const std::error_code error = starts ? platform::MakeLoginEntry(program.executable)
                                       : platform::RemoveLoginEntry(program.executable);
  if (error) program.errors.LogError(platform::SystemMessage(error));
  return !error;
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

}  // namespace settings
