#include <exception>
#include <string>

#include "app/tarnwerk.h"
#include "core/help_text.h"
#include "core/startup.h"
#include "platform/native_path.h"
#include "platform/process_limits.h"
#include "platform/program_location.h"
#include "platform/standard_streams.h"

int main(int argumentCount, char** arguments) {
  platform::SecureStandardStreams();
  const std::string commandLine = platform::CommandLineText(argumentCount, arguments);
  if (const auto text = ModMain::RequestedText(commandLine)) {
    platform::SayOnStandardOutput(*text);
    return 0;
  }
  platform::PrepareLimits();
  const std::filesystem::path executable = platform::ExecutablePath();
  const std::filesystem::path directory = platform::ProgramDirectory();
  if (directory.empty()) {
    platform::SayOnStandardError("Tarnwerk: no directory for the user's files; set TARNWERK_HOME");
    return 1;
  }
  const std::filesystem::path installedIn =
      platform::IsInstalled() ? executable.parent_path() : std::filesystem::path();
  const settings::Program program(platform::PathText(directory),
                                  platform::PathText(executable.stem()),
                                  platform::PathText(installedIn));
  try {
    app::Tarnwerk tarnwerk(program);
    if (ModMain::Main(program, commandLine, tarnwerk)) tarnwerk.Run();
    return tarnwerk.HasSucceeded() ? 0 : 1;
  } catch (const std::exception& error) {
    // Out of memory, or of descriptors for the loop itself.
    program.errors.LogError(error.what());
    platform::SayOnStandardError(std::string("Tarnwerk: ") + error.what());
    return 1;
  }
}
