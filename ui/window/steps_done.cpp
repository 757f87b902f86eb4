#include "ui/window/steps_left.h"

#include <algorithm>
#include <vector>

#include "files/files.h"
#include "mail/mail_accounts.h"

namespace ui {
namespace {

constexpr std::size_t kEntriesLookedAt = 64;  // a user with so many folders needs no help

bool HoldsEntry(const std::string& folder, bool isFolder) {
  if (folder.empty()) return false;
  std::error_code error;
  platform::DirectoryReader reader = files::ReadFolder(folder, error);
  std::vector<platform::DirectoryEntry> entries;
  if (!error) reader.Read(kEntriesLookedAt, entries, error);
  return entries.size() == kEntriesLookedAt ||
         std::any_of(entries.begin(), entries.end(), [isFolder](const auto& entry) {
           return entry.isFolder == isFolder && !entry.isHidden;
         });
}

}  // namespace

StepsLeft LookForSteps(const Manager& manager) {
  return {
      .putPage = !HoldsEntry(manager.web.RootDir(), false),
      .addMailUser = !HoldsEntry(ModMail::MailUserFolder(manager.mail.RootDir()), true),
      .allowUploads = manager.ftp.Options().uploadDir.empty(),
  };
}

}  // namespace ui
