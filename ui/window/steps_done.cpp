#include "ui/window/steps_done.h"

#include <algorithm>
#include <vector>

#include "core/protection.h"
#include "files/files.h"
#include "ftp/ftp_server.h"
#include "mail/mail_server.h"
#include "web/web_server.h"

namespace ui {
namespace {

constexpr std::size_t kEntriesLookedAt = 64;  // a user with so many needs no help

bool HasFiles(const std::string& folder) {
  if (folder.empty()) return false;
  std::error_code error;
  platform::DirectoryReader reader = files::ReadFolder(folder, error);
  std::vector<platform::DirectoryEntry> entries;
  if (!error) reader.Read(kEntriesLookedAt, entries, error);
  return entries.size() == kEntriesLookedAt ||
         std::any_of(entries.begin(), entries.end(),
                     [](const auto& entry) { return !entry.isFolder && !entry.isHidden; });
}

}  // namespace

StepsDone LookForSteps(const Manager& manager) {
  return {
      .putContent = HasFiles(manager.web.RootDir()) || HasFiles(manager.ftp.RootDir()),
      .start = manager.web.IsRunning() || manager.ftp.IsRunning() || manager.mail.IsRunning(),
      .giveAddress = FirstSteps::WasAddressGiven(),
      .protect = manager.protection.Options().confine || !manager.ftp.Options().uploadDir.empty(),
  };
}

}  // namespace ui
