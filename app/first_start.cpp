#include "app/first_start.h"

#include <filesystem>

#include "platform/program_location.h"

namespace app {
namespace {

namespace fs = std::filesystem;

// Mailboxes store their passwords in plain text, so the copy is private.
void CopyForThisUserAlone(const fs::path& source, const fs::path& target, std::error_code& error) {
  fs::copy(source, target, fs::copy_options::recursive, error);
  if (!error) fs::permissions(target, fs::perms::owner_all, error);
}

}  // namespace

void FillNewProgramDirectory() {
  std::error_code error;
  const fs::path directory = platform::ProgramDirectory();
  if (!platform::IsInstalled() || fs::exists(fs::symlink_status(directory, error))) return;
  fs::path unfinished = directory;
  unfinished += ".new";
  fs::remove_all(unfinished, error);
  fs::create_directories(directory.parent_path(), error);
  CopyForThisUserAlone(platform::SampleDirectory(), unfinished, error);
  if (!error) fs::rename(unfinished, directory, error);
  if (error) fs::remove_all(unfinished, error);
}

}  // namespace app
