#include "platform/native_path.h"

#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

#include "platform/code_page.h"
#include "platform/linux/descriptor.h"
#include "platform/linux/folder_names.h"
#include "platform/linux/name_bytes.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

std::string DecodeName(std::string_view bytes) {
  const Charset charset = SystemCharset();
  return charset == Charset::kUtf8 ? std::string(bytes) : ToUtf8(charset, bytes);
}

// With single separators. Empty if the text is not a usable path.
std::string NativeBytes(std::string_view pathText) {
  if (pathText.find('\0') != std::string_view::npos) return {};
  // Some encodings need fewer bytes than UTF-8, but never less than half.
  constexpr std::size_t kMost = std::size_t{2} * PATH_MAX;
  std::string native(pathText);
  // Every character is written, so that compilers make whole registers of it.
  std::transform(native.begin(), native.end(), native.begin(),
                 [](char c) { return c == '\\' ? '/' : c; });
  const auto isSecond = [](char first, char second) { return first == '/' && second == '/'; };
  native.erase(std::unique(native.begin(), native.end(), isSecond), native.end());
  if (native.size() > kMost) return {};
  native = NameBytes(std::move(native));
  return native.size() < PATH_MAX ? native : std::string();
}

// Resolves a path from its start through open folders, so that each component costs the same
// however many there are.
class Descent {
 public:
  explicit Descent(std::string_view path) : rest_(path) {
    if (BeginsIn(ParentLength(path)) ||
        BeginsIn(ParentLength(path.substr(0, ParentLength(path))))) {
      return;
    }
    const bool rooted = rest_.starts_with('/');
    folder_ = Descriptor(open(rooted ? "/" : ".", O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!rooted) return;
    found_ = "/";
    rest_.remove_prefix(1);
  }

  // The path as found; the part after the first component that is missing stays as written.
  std::string Run() {
    while (!rest_.empty() && Step()) {
    }
    return found_ + std::string(rest_);
  }

 private:
  // Of the folder's path, without its "/"; 0 for the root, or if there is none.
  static std::size_t ParentLength(std::string_view path) {
    const std::size_t end = path.rfind('/');
    return end == std::string_view::npos ? 0 : end;
  }

  // Most often only the last name or two are missing or spelled otherwise. It saves a call for each
  // folder above.
  bool BeginsIn(std::size_t length) {
    const std::string folder(rest_.substr(0, length));
    if (folder.empty()) return false;
    folder_ = Descriptor(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder_.IsOpen()) return false;
    found_ = folder + "/";
    rest_.remove_prefix(length + 1);
    return true;
  }

  // False if nothing more can be found.
  bool Step() {
    const std::size_t end = std::min(rest_.find('/'), rest_.size());
    const std::string name(rest_.substr(0, end));
    const std::optional<std::string> entry = Enter(name, end == rest_.size());
    if (!entry) return false;
    const std::size_t taken = std::min(end + 1, rest_.size());
    found_ += *entry + std::string(rest_.substr(end, taken - end));
    rest_.remove_prefix(taken);
    return true;
  }

  // The name as spelled in the folder. Enters it unless it is the last component.
  std::optional<std::string> Enter(const std::string& name, bool isLast) {
    if (isLast && faccessat(folder_.Get(), name.c_str(), F_OK, 0) == 0) return name;
    if (!isLast && GoTo(name)) return name;
    if (errno != ENOENT) return std::nullopt;
    const std::optional<std::string> entry = FindIgnoringCase(folder_.Get(), name);
    if (!entry || isLast) return entry;
    return GoTo(*entry) ? entry : std::nullopt;
  }

  bool GoTo(const std::string& name) {
    Descriptor next(openat(folder_.Get(), name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!next.IsOpen()) return false;
    folder_ = std::move(next);
    return true;
  }

  std::string found_;
  std::string_view rest_;
  Descriptor folder_;
};

}  // namespace

NativeString NativeText(std::string_view pathText) { return NativeBytes(pathText); }

fs::path NativePath(std::string_view pathText) { return NativeBytes(pathText); }

fs::path ExistingPath(std::string_view pathText) {
  const std::string exact = NativeBytes(pathText);
  if (exact.empty() || access(exact.c_str(), F_OK) == 0) return exact;
  return Descent(exact).Run();
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
