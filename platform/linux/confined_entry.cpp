#include "platform/confined_entry.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/linux/descriptor.h"
#include "platform/native_path.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr int kFlags = O_PATH | O_CLOEXEC;

// For systems that cannot confine a lookup: no links at all.
int OpenStepByStep(int root, std::string_view name) {
  Descriptor folder(openat(root, ".", kFlags | O_DIRECTORY));
  while (folder.IsOpen() && !name.empty()) {
    const std::size_t end = std::min(name.find('/'), name.size());
    const std::string step(name.substr(0, end));
    const bool isLast = end == name.size();
    folder = Descriptor(
        openat(folder.Get(), step.c_str(), kFlags | O_NOFOLLOW | (isLast ? 0 : O_DIRECTORY)));
    name.remove_prefix(std::min(end + 1, name.size()));
  }
  return folder.Release();
}

int OpenBeneath(int root, const std::string& name) {
  open_how how = {.flags = kFlags, .mode = 0, .resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS};
  const char* path = name.empty() ? "." : name.c_str();
  int opened = -1;
  // The kernel gives up when something is renamed meanwhile.
  constexpr int kAttempts = 64;
  for (int i = 0; i < kAttempts && opened < 0 && (i == 0 || errno == EAGAIN); ++i) {
    opened = static_cast<int>(syscall(SYS_openat2, root, path, &how, sizeof(how)));
  }
  if (opened < 0 && (errno == ENOSYS || errno == EPERM)) return OpenStepByStep(root, name);
  return opened;
}

// What leads out is as good as missing, whatever the kernel calls it.
std::error_code LastError() {
  const bool leadsOut = errno == EXDEV || errno == ELOOP || errno == EAGAIN;
  return {leadsOut ? ENOENT : errno, std::generic_category()};
}

std::string Numbered(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// The name relative to the root as the folders spell it. Whoever changes them meanwhile only makes
// it a name that is not found.
std::string Spelled(std::string_view root, std::string_view name) {
  std::string path(root);
  while (path.ends_with('\\')) path.pop_back();
  const std::size_t rootLength = ExistingPath(path + "\\").native().size();
  const std::string whole = ExistingPath(path + "\\" + std::string(name)).native();
  return whole.size() < rootLength ? std::string() : whole.substr(rootLength);
}

}  // namespace

ConfinedEntry::~ConfinedEntry() {
  if (handle_ != kNone) close(static_cast<int>(handle_));
}

ConfinedEntry ConfinedEntry::Find(std::string_view root, std::string_view name, Links links,
                                  std::error_code& error) {
  error.clear();
  const std::string spelled = Spelled(root, name);
  const bool isUsable = name.empty() == spelled.empty();
  const Descriptor folder(open(ExistingPath(root).c_str(), kFlags | O_DIRECTORY));
  ConfinedEntry found;
  if (!isUsable) errno = ENOENT;
  if (isUsable && folder.IsOpen()) {
    const char* path = spelled.empty() ? "." : spelled.c_str();
    found.handle_ = links == Links::kStayInside ? OpenBeneath(folder.Get(), spelled)
                                                : openat(folder.Get(), path, kFlags);
  }
  if (found.handle_ == kNone) {
    error = LastError();
    return found;
  }
  found.path_ = Numbered(static_cast<int>(found.handle_));
  found.realPath_ = fs::read_symlink(found.path_, error);
  return found;
}

ConfinedEntry ConfinedEntry::FindPlace(std::string_view root, std::string_view name,
                                       std::error_code& error) {
  const std::size_t separator = name.find_last_of('\\');
  const bool isInRoot = separator == std::string_view::npos;
  const std::string_view last = isInRoot ? name : name.substr(separator + 1);
  ConfinedEntry found = Find(root, isInRoot ? std::string_view() : name.substr(0, separator),
                             Links::kStayInside, error);
  if (error) return found;
  found.path_ = ExistingPath(PathText(found.path_) + "\\" + std::string(last));
  found.realPath_ /= found.path_.filename();
  return found;
}

}  // namespace platform
