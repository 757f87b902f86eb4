#include "platform/native_path.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

#include "platform/code_page.h"
#include "platform/text_case.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

std::string NameBytes(std::string_view text) {
  const Charset charset = SystemCharset();
  return charset == Charset::kUtf8 ? std::string(text) : FromUtf8(charset, text);
}

std::string DecodeName(std::string_view bytes) {
  const Charset charset = SystemCharset();
  return charset == Charset::kUtf8 ? std::string(bytes) : ToUtf8(charset, bytes);
}

bool Exists(const fs::path& path) { return access(path.c_str(), F_OK) == 0; }

// The entry of `folder` whose name is `name` without regard to case; the first by name, so that the
// answer does not depend on the directory's inner order.
std::optional<fs::path> FindEntry(const fs::path& folder, const std::string& name) {
  DIR* directory = opendir(folder.empty() ? "." : folder.c_str());
  if (directory == nullptr) return std::nullopt;
  std::optional<std::string> found;
  while (const dirent* entry = readdir(directory)) {
    const std::string candidate = entry->d_name;
    if (!EqualIgnoringCase(DecodeName(candidate), DecodeName(name))) continue;
    if (!found || candidate < *found) found = candidate;
  }
  closedir(directory);
  if (!found) return std::nullopt;
  return folder / *found;
}

}  // namespace

fs::path NativePath(std::string_view pathText) {
  std::string native;
  native.reserve(pathText.size());
  for (const char c : pathText) {
    const char separated = c == '\\' ? '/' : c;
    if (separated == '/' && !native.empty() && native.back() == '/') continue;
    native += separated;
  }
  return NameBytes(native);
}

fs::path ExistingPath(std::string_view pathText) {
  const fs::path exact = NativePath(pathText);
  if (exact.empty() || Exists(exact)) return exact;
  fs::path found;
  for (const fs::path& component : exact) {
    // Below something that does not exist there is nothing to find: the rest stays as written.
    const fs::path next = found / component;
    const bool asWritten =
        component.empty() || Exists(next) || !Exists(found.empty() ? "." : found);
    found = asWritten ? next : FindEntry(found, component.string()).value_or(next);
  }
  return found;
}

std::string PathText(const fs::path& native) {
  return PathTextFromUser(DecodeName(native.string()));
}

std::string NameTextOf(const std::string& name) { return DecodeName(name); }

std::string PathTextFromUser(std::string_view path) {
  std::string text(path);
  std::replace(text.begin(), text.end(), '/', '\\');
  return text;
}

std::string PathTextForUser(std::string_view pathText) {
  std::string path(pathText);
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

}  // namespace platform
