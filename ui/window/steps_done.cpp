#include "ui/window/steps_done.h"

#include <algorithm>
#include <vector>

#include "core/protection.h"
#include "core/service_addresses.h"
#include "core/start_diagnosis.h"
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

StepState DoneIf(bool isDone) { return isDone ? StepState::kDone : StepState::kNeeded; }

// On their usual port browsers show the pages in any case.
StepState StateForBrowsers(const ModWeb::WebServer& web) {
  if (web.Options().answers.http) return StepState::kDone;
  const bool isUsualPort = core::CurrentPorts(web).first == core::kBrowsersPort;
  return isUsualPort ? StepState::kOptional : StepState::kNeeded;
}

}  // namespace

StepStates LookForSteps(const Manager& manager) {
  return {
      .putContent = DoneIf(HasFiles(manager.web.RootDir()) || HasFiles(manager.ftp.RootDir())),
      .start =
          DoneIf(manager.web.IsRunning() || manager.ftp.IsRunning() || manager.mail.IsRunning()),
      .forBrowsers = StateForBrowsers(manager.web),
      .giveAddress = DoneIf(FirstSteps::WasAddressGiven()),
      .protect =
          DoneIf(manager.protection.Options().confine || !manager.ftp.Options().uploadDir.empty()),
  };
}

}  // namespace ui
