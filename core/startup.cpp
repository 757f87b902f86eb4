#include "core/startup.h"

#include <string>
#include <vector>

#include "core/command_line.h"
#include "platform/text_case.h"
#include "settings/ini_file.h"
#include "settings/start_options.h"
#include "text/conversions.h"

namespace ModMain {
namespace {

using settings::StartOptions;

struct StartFlags {
  bool AutoStart = false;
  bool StartInTray = false;
};

class Words {
 public:
  explicit Words(std::string_view commandLine) : words_(GetCommandLineWords(commandLine)) {}

  bool IsEmpty() const { return words_.size() == 1; }
  bool Is(std::size_t position, std::string_view word) const {
    return position < words_.size() && platform::EqualIgnoringCase(words_[position], word);
  }

 private:
  std::vector<std::string> words_;
};

bool SystemFlag(const settings::Program& program, std::string_view key) {
  const std::string file = program.File("Server.ini");
  const std::string text = ModINIOP::ReadIni(file, StartOptions::kSection, key);
  return text::ToBoolean(text).value_or(false);
}

// Any argument overrides both settings.
StartFlags FlagsOf(const settings::Program& program, const Words& words) {
  if (words.IsEmpty()) {
    return {SystemFlag(program, StartOptions::kAutoStartService),
            SystemFlag(program, StartOptions::kStartInTaskBar)};
  }
  // Despite its name, "SHOW" shows the tray icon and not the window.
  return {words.Is(1, "START"), words.Is(2, "SHOW")};
}

}  // namespace

bool Main(const settings::Program& program, std::string_view commandLine,
          core::StartupSteps& steps) {
  steps.AuthorizeInFirewall();
  const Words words(commandLine);
  if (words.Is(1, "STOP")) {
    steps.CloseRunningInstance();
    return false;
  }
  const StartFlags flags = FlagsOf(program, words);
  if (!steps.BecomeRunningInstance()) return false;
  steps.RecordProgramPath();
  steps.SwitchProxyOff();
  if (flags.AutoStart) steps.StartServices();
  if (flags.StartInTray) {
    steps.GoToTray();
  } else {
    steps.ShowMainWindow();
  }
  if (words.Is(3, "WEB")) steps.OpenWebAddress();
  return true;
}

}  // namespace ModMain
