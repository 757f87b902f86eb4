// A program that starts at login, for tests: "on" and "off" set whether it does; without a word it
// notes in its folder that it was started, and with which program directory. Before the first it
// waits for the end of its input.

#include <fstream>
#include <iostream>
#include <string>

#include "platform/native_path.h"
#include "platform/program_location.h"
#include "settings/autostart.h"

int main(int argumentCount, char** arguments) {
  const std::filesystem::path executable = platform::ExecutablePath();
  if (argumentCount < 2) {
    std::ofstream(executable.parent_path() / "started") << platform::ProgramDirectory().string();
    return 0;
  }
  while (std::cin.get() != EOF) {
  }
  const settings::Program program(platform::PathText(platform::ProgramDirectory()),
                                  platform::PathText(executable.stem()));
  return settings::SetStartsWithSystem(program, arguments[1] == std::string("on")) ? 0 : 1;
}
