#include "platform/native_path.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

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

// Looks for an entry without regard to case; the first by name, so that the answer does not depend
// on the directory's inner order.
std::optional<std::string> ScanFor(const fs::path& folder, const std::string& upperName) {
  DIR* directory = opendir(folder.c_str());
  if (directory == nullptr) return std::nullopt;
  std::optional<std::string> found;
  while (const dirent* entry = readdir(directory)) {
    const std::string candidate = entry->d_name;
    if (UpperCase(DecodeName(candidate)) != upperName) continue;
    if (!found || candidate < *found) found = candidate;
  }
  closedir(directory);
  return found;
}

// Answers of earlier scans, each good for as long as its folder has not changed: a file that is
// asked for over and over and is not there must not cost a scan every time.
class ScanMemory {
 public:
  std::optional<std::string> Find(const fs::path& folder, const std::string& name) {
    struct stat facts = {};
    if (stat(folder.c_str(), &facts) != 0) return std::nullopt;
    const std::string upperName = UpperCase(DecodeName(name));
    const Key key = {facts.st_dev, facts.st_ino, upperName};
    const auto known = answers_.find(key);
    if (known != answers_.end() && IsSame(known->second.changed, facts.st_mtim)) {
      return known->second.name;
    }
    const std::optional<std::string> found = ScanFor(folder, upperName);
    if (IsSettled(facts.st_mtim)) Remember(key, {facts.st_mtim, found});
    return found;
  }

 private:
  using Key = std::tuple<dev_t, ino_t, std::string>;
  struct Answer {
    timespec changed;
    std::optional<std::string> name;
  };

  static constexpr std::size_t kMostAnswers = 256;

  static bool IsSame(const timespec& left, const timespec& right) {
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
  }
  // A folder's time moves in steps: one changed just now may change again within the same step.
  static bool IsSettled(const timespec& changed) { return std::time(nullptr) - changed.tv_sec > 2; }

  void Remember(const Key& key, Answer answer) {
    if (answers_.size() >= kMostAnswers) answers_.clear();
    answers_[key] = std::move(answer);
  }

  std::map<Key, Answer> answers_;
};

std::optional<std::string> FindEntry(const fs::path& folder, const std::string& name) {
  static ScanMemory memory;
  return memory.Find(folder.empty() ? "." : folder, name);
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
  // Down from the longest part that exists as written.
  fs::path found = exact;
  std::vector<fs::path> rest;
  while (!found.empty() && found.has_relative_path() && !Exists(found)) {
    rest.push_back(found.filename());
    found = found.parent_path();
  }
  for (auto name = rest.rbegin(); name != rest.rend(); ++name) {
    const fs::path next = found / *name;
    const bool knownMissing = name == rest.rbegin();
    if (name->empty() || (!knownMissing && Exists(next))) {
      found = next;
    } else if (const auto entry = FindEntry(found, name->string())) {
      found /= *entry;
    } else {
      // Below something that does not exist there is nothing to find: the rest stays as written.
      for (; name != rest.rend(); ++name) found /= *name;
      break;
    }
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
