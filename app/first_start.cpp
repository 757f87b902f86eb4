#include "app/first_start.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "core/protection_options.h"
#include "platform/native_path.h"
#include "platform/program_location.h"
#include "platform/standard_streams.h"
#include "platform/system_message.h"
#include "settings/ini_change.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSettings = "Server.ini";

// Mailboxes store their passwords in plain text, so the copy is private.
void CopyForThisUserAlone(const fs::path& source, const fs::path& target, std::error_code& error) {
  fs::copy(source, target, fs::copy_options::recursive, error);
  if (!error) fs::permissions(target, fs::perms::owner_all, error);
}

// The sample's own settings leave that off: ./run uses them as they are.
void TurnProtectionOn(const fs::path& directory, std::error_code& error) {
  settings::IniChange change(platform::PathText(directory / kSettings));
  if (change.IsNew()) return;
  change.Set(core::kProtectionSection, "Reach", "lan");
  change.Set(core::kProtectionSection, "Confine", "1");
  error = change.Save();
}

void CopySample(const fs::path& sample, const fs::path& target, std::error_code& error) {
  CopyForThisUserAlone(sample, target, error);
  if (!error) TurnProtectionOn(target, error);
}

void FillInstalled(const fs::path& directory) {
  std::error_code error;
  if (fs::exists(fs::symlink_status(directory, error))) return;
  fs::path unfinished = directory;
  unfinished += ".new";
  fs::remove_all(unfinished, error);
  fs::create_directories(directory.parent_path(), error);
  CopySample(platform::SampleDirectory(), unfinished, error);
  if (!error) fs::rename(unfinished, directory, error);
  if (!error) return;
  platform::SayOnStandardError("Tarnwerk: cannot create " +
                               platform::PathTextForUser(platform::PathText(directory)) + ": " +
                               platform::SystemMessage(error));
  fs::remove_all(unfinished, error);
}

// The settings first: without them the services of a copy that was broken off would stand open.
std::vector<fs::path> NamesIn(const fs::path& sample) {
  std::error_code error;
  std::vector<fs::path> names;
  for (const auto& entry : fs::directory_iterator(sample, error)) {
    names.push_back(entry.path().filename());
  }
  std::partition(names.begin(), names.end(),
                 [](const fs::path& name) { return name == kSettings; });
  return names;
}

void FillPortable(const fs::path& directory) {
  const std::vector<fs::path> names = NamesIn(platform::PortableSampleDirectory());
  std::error_code error;
  const bool isUsed = std::any_of(names.begin(), names.end(), [&](const fs::path& name) {
    return fs::exists(fs::symlink_status(directory / name, error));
  });
  if (isUsed) return;
  const fs::path unfinished = directory / "portable.new";
  fs::remove_all(unfinished, error);
  CopySample(platform::PortableSampleDirectory(), unfinished, error);
  for (const fs::path& name : names) {
    if (!error) fs::rename(unfinished / name, directory / name, error);
  }
  fs::remove_all(unfinished, error);
}

}  // namespace

void FillNewProgramDirectory() {
  const fs::path directory = platform::ProgramDirectory();
  if (platform::IsInstalled()) return FillInstalled(directory);
  if (directory == platform::UsualProgramDirectory()) FillPortable(directory);
}

}  // namespace app
