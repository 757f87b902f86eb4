#include "app/first_start.h"

#include <filesystem>

#include "platform/program_location.h"

namespace app {
namespace {

namespace fs = std::filesystem;

// Mailboxes keep their passwords in plain text.
void CopyForThisUserAlone(const fs::path& source, const fs::path& target, std::error_code& error) {
  fs::copy(source, target, fs::copy_options::recursive, error);
  if (!error) fs::permissions(target, fs::perms::owner_all, error);
}

}  // namespace

void FillNewProgramDirectory() {
  std::error_code error;
  const fs::path directory = platform::ProgramDirectory();
  const fs::path sample = platform::SampleDirectory();
  if (fs::exists(fs::symlink_status(directory, error)) || !fs::is_directory(sample, error)) return;
  fs::path unfinished = directory;
  unfinished += ".new";
  fs::remove_all(unfinished, error);
  fs::create_directories(directory.parent_path(), error);
  CopyForThisUserAlone(sample, unfinished, error);
  if (!error) fs::rename(unfinished, directory, error);
  if (error) fs::remove_all(unfinished, error);
}

}  // namespace app
