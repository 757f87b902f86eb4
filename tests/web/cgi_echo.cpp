// A CGI program for tests. Its page contains the number of its arguments and its input. Its name
// sets its behaviour: "slow" waits first, "silent" writes no page.

#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

int main(int argumentCount, char** arguments) {
  if (argumentCount < 3) return 1;
  const std::string name = arguments[0];
  if (name.find("slow") != std::string::npos) {
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
  }
  if (name.find("silent") != std::string::npos) return 0;
  std::ifstream input(arguments[1], std::ios::binary);
  const std::string body{std::istreambuf_iterator<char>(input), {}};
  std::ofstream(arguments[2], std::ios::binary) << argumentCount << "|" << body << "|";
  return 0;
}
