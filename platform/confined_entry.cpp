#include "platform/confined_entry.h"

#include <algorithm>
#include <string>

#include "platform/native_path.h"
#include "platform/text_case.h"

namespace platform {

namespace fs = std::filesystem;

ConfinedEntry& ConfinedEntry::operator=(ConfinedEntry&& other) noexcept {
  std::swap(handle_, other.handle_);
  std::swap(path_, other.path_);
  std::swap(realPath_, other.realPath_);
  return *this;
}

fs::path RealPathOf(std::string_view pathText) {
  std::error_code error;
  const fs::path real = fs::weakly_canonical(ExistingPath(pathText), error);
  return error ? fs::path() : real;
}

bool IsAtOrBelow(const fs::path& entry, const fs::path& folder) {
  if (entry.empty() || folder.empty()) return false;
  const std::string name = UpperCase(PathText(entry));
  std::string begin = UpperCase(PathText(folder));
  while (begin.ends_with('\\')) begin.pop_back();
  return name.starts_with(begin) && (name.size() == begin.size() || name[begin.size()] == '\\');
}

}  // namespace platform
