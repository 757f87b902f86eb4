// A CGI program for tests. Its page contains the number of its arguments and its input. Its name
// sets its behaviour: "held" waits for a file "go" beside its input, "slow" takes a while, "silent"
// writes no page.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

int main(int argumentCount, char** arguments) {
  using namespace std::chrono_literals;
  if (argumentCount < 3) return 1;
  const std::string name = arguments[0];
  const auto is = [&](const char* word) { return name.find(word) != std::string::npos; };
  if (is("slow")) std::this_thread::sleep_for(700ms);
  const auto go = std::filesystem::path(arguments[1]).replace_filename("go");
  for (int i = 0; is("held") && i < 1000 && !exists(go); ++i) std::this_thread::sleep_for(10ms);
  if (is("silent")) return 0;
  std::ifstream input(arguments[1], std::ios::binary);
  const std::string body{std::istreambuf_iterator<char>(input), {}};
  std::ofstream(arguments[2], std::ios::binary) << argumentCount << "|" << body << "|";
  return 0;
}
