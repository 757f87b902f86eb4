#include "text/wildcards.h"

#include <string>

#include "platform/ascii.h"
#include "platform/text_case.h"
#include "text/utf8.h"

namespace text {
namespace {

using platform::IsAscii;
using platform::UpperAscii;

constexpr std::size_t kNone = std::string_view::npos;

// Both in upper case but for ASCII letters. On a mismatch, the last "*" matches one more character
// and matching resumes after it.
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
    } else if (p < pattern.size() && UpperAscii(pattern[p]) == UpperAscii(name[n])) {
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

bool IsPlainAscii(char c) { return IsAscii({&c, 1}) && c != '*' && c != '?'; }

}  // namespace

bool MatchesWildcard(std::string_view name, std::string_view pattern) {
  if (pattern == "*.*") return true;
  // Most often the end decides.
  while (!pattern.empty() && IsPlainAscii(pattern.back())) {
    if (name.empty() || UpperAscii(name.back()) != UpperAscii(pattern.back())) return false;
    name.remove_suffix(1);
    pattern.remove_suffix(1);
  }
  if (pattern == "*") return true;
  if (IsAscii(name) && IsAscii(pattern)) return Matches(name, pattern);
  return Matches(platform::UpperCase(name), platform::UpperCase(pattern));
}

}  // namespace text
