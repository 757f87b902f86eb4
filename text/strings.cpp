#include "text/strings.h"

namespace text {

std::string_view TrimTrailingBlanks(std::string_view text) {
  const std::size_t last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view()
                                         : TrimTrailingBlanks(text.substr(first));
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t start = 0;
  while (true) {
    const std::size_t found = text.find(from, start);
    result += text.substr(start, found == std::string_view::npos ? found : found - start);
    if (found == std::string_view::npos) return result;
    result += to;
    start = found + from.size();
  }
}

std::string Joined(const std::vector<std::string>& texts, std::string_view between) {
  std::string joined;
  for (const std::string& text : texts) {
    if (&text != &texts.front()) joined += between;
    joined += text;
  }
  return joined;
}

}  // namespace text
