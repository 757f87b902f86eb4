#include "platform/linux/locked_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace platform {
namespace {

std::error_code LastError() { return {errno, std::generic_category()}; }

}  // namespace

LockedFolder::LockedFolder(const std::filesystem::path& folder, std::error_code& error) {
  std::filesystem::create_directories(folder.parent_path(), error);
  if (error) return;
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
    error = LastError();
    return;
  }
  lock_ = Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!lock_.IsOpen() || flock(lock_.Get(), LOCK_EX) != 0) error = LastError();
}

}  // namespace platform
