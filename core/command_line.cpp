#include "core/command_line.h"

namespace ModMain {

std::vector<std::string> GetCommandLineWords(std::string_view text, int most) {
  std::vector<std::string> words(1);
  bool inWord = false;
  for (const char c : text) {
    const bool separates = c == ' ' || c == '\t' || c == '/';
    if (!separates && !inWord) {
      if (static_cast<int>(words.size()) > most) break;
      words.emplace_back();
    }
    inWord = !separates;
    if (inWord) words.back() += c;
  }
  return words;
}

}  // namespace ModMain
