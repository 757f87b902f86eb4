#include "app/tarnwerk.h"
#include "core/startup.h"
#include "platform/native_path.h"
#include "platform/program_location.h"

int main(int argumentCount, char** arguments) {
  const core::Program program(platform::PathText(platform::ProgramDirectory()),
                              platform::PathText(platform::ExecutablePath().stem()));
  app::Tarnwerk tarnwerk(program);
  const std::string commandLine = platform::CommandLineText(argumentCount, arguments);
  if (ModMain::Main(program, commandLine, tarnwerk)) tarnwerk.Run();
  return tarnwerk.HasSucceeded() ? 0 : 1;
}
