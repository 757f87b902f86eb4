#include "platform/entry.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <cerrno>
#include <utility>

#include "platform/linux/descriptor.h"
#include "platform/linux/large_file.h"

namespace platform {
namespace {

// NFS keeps the name of a removed file that is open under another one in the same folder, which
// then could not be removed.
bool KeepsNames(const Descriptor& file) {
  struct statfs facts = {};
  return fstatfs(file.Get(), &facts) != 0 || facts.f_type == NFS_SUPER_MAGIC;
}

// Keeps what a large file takes until after the call that removes its name.
class LargeFile {
 public:
  explicit LargeFile(const std::filesystem::path& path) {
    struct stat facts = {};
    if (lstat(path.c_str(), &facts) != 0) return;
    const bool isLarge = static_cast<std::uint64_t>(facts.st_size) >= kLargeFile;
    if (!S_ISREG(facts.st_mode) || !isLarge || facts.st_nlink > 1) return;
    file_ = Descriptor(open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (file_.IsOpen() && KeepsNames(file_)) file_ = {};
  }
  LargeFile(const LargeFile&) = delete;
  LargeFile& operator=(const LargeFile&) = delete;
  ~LargeFile() {
    if (file_.IsOpen()) CloseBeside(std::move(file_));
  }

 private:
  Descriptor file_;
};

}  // namespace

void MoveEntry(const std::filesystem::path& from, const std::filesystem::path& to,
               std::error_code& error) {
  error.clear();
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return;
  error.assign(errno, std::generic_category());
  // Not every file system can rename without replacing in one step.
  if (error != std::errc::invalid_argument) return;
  if (std::error_code missing; std::filesystem::exists(symlink_status(to, missing))) {
    error = std::make_error_code(std::errc::file_exists);
  } else {
    std::filesystem::rename(from, to, error);
  }
}

bool RemoveEntry(const std::filesystem::path& path, std::error_code& error) {
  const LargeFile held(path);
  return std::filesystem::remove(path, error);
}

void ReplaceEntry(const std::filesystem::path& from, const std::filesystem::path& to,
                  std::error_code& error) {
  const LargeFile held(to);
  std::filesystem::rename(from, to, error);
}

void SetHidden(const std::filesystem::path&, bool) {}

}  // namespace platform
