#include "text/wildcards.h"

#include <string>

#include "platform/text_case.h"
#include "text/utf8.h"

namespace text {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

// On a mismatch, the last "*" matches one more character and matching resumes after it.
bool Matches(std::string_view name, std::string_view pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = kNone;
  std::size_t starName = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      starName = n;
    } else if (p < pattern.size() && pattern[p] == '?') {
      n = CharacterEnd(name, n);
      ++p;
    } else if (p < pattern.size() && pattern[p] == name[n]) {
      ++n;
      ++p;
    } else if (star != kNone) {
      starName = CharacterEnd(name, starName);
      n = starName;
      p = star + 1;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace

bool MatchesWildcard(std::string_view name, std::string_view pattern) {
  if (pattern == "*.*") return true;
  return Matches(platform::UpperCase(name), platform::UpperCase(pattern));
}

}  // namespace text
