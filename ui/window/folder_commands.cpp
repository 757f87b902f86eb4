#include "ui/window/folder_commands.h"

#include <wx/dialog.h>
#include <wx/frame.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "core/protection.h"
#include "files/files.h"
#include "ftp/ftp_server.h"
#include "platform/native_path.h"
#include "platform/shell.h"
#include "platform/system_message.h"
#include "platform/text_case.h"
#include "settings/change.h"
#include "text/path_text.h"
#include "ui/controls/message_box.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/replace_question.h"
#include "ui/dialogs/save_report.h"
#include "ui/pages/upload_note.h"
#include "ui/window/content.h"
#include "ui/window/status_bar.h"
#include "web/web_options.h"

namespace ui {
namespace {

using core::ServiceKind;

constexpr std::size_t kLongestPath = 254;  // that settings hold, in bytes

UploadNote::Uploads UploadsOf(const ModFtp::FtpOptions& options) {
  using Uploads = UploadNote::Uploads;
  const auto comparable = [](const std::string& folder) {
    return platform::UpperCase(ModCommon::AddSlash(folder));
  };
  if (options.uploadDir.empty()) return Uploads::kNone;
  const bool isInRoot = comparable(options.uploadDir).starts_with(comparable(options.ftpRoot));
  return isInRoot ? Uploads::kInRoot : Uploads::kElsewhere;
}

}  // namespace

void FolderCommands::ShowRootDir(ServiceKind service) {
  const std::string root = manager_->control.Of(service).RootDir();
  content_->FrameOf(service).SetRootDir(platform::PathTextForUser(root));
  content_->FrameOf(service).SetRootMissing(!root.empty() && !files::FolderExists(root));
  if (service == ServiceKind::kFtp) ShowUploads();
}

void FolderCommands::ShowUploads() {
  const ModFtp::FtpOptions& options = manager_->ftp.Options();
  content_->uploadNote->ShowUploads(UploadsOf(options), manager_->protection.Options());
  content_->ftpFolder->Tree().MarkUploads(options.uploadDir);
}

void FolderCommands::ShowContent(ServiceKind service) {
  if (service == ServiceKind::kMail) return;
  content_->FolderOf(service).Tree().ShowFolder(manager_->control.Of(service).RootDir());
}

void FolderCommands::Refresh(ServiceKind service) {
  ShowContent(service);
  content_->FolderOf(service).ForgetOutcome();
}

void FolderCommands::OpenRoot(ServiceKind service) {
  const std::string root = manager_->control.Of(service).RootDir();
  if (!files::FolderExists(root)) return status_.Remark("主目录不存在。");
  platform::OpenWithShell(platform::PathTextForUser(root));
}

void FolderCommands::OpenFolderOf(const std::string& path) {
  const bool isFolder = files::FolderExists(path);
  const std::string folder = isFolder ? path : path.substr(0, path.find_last_of('\\') + 1);
  if (!files::FolderExists(folder)) return status_.Remark("文件夹不存在。");
  platform::OpenWithShell(platform::PathTextForUser(folder));
}

void FolderCommands::MakeRoot(ServiceKind service) {
  MakeFolder(manager_->control.Of(service).RootDir());
  ShowRootDir(service);
  ShowContent(service);
}

bool FolderCommands::MakeFolder(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(platform::ExistingPath(folder), error);
  if (error) Warn(&window_, "文件夹未能建立：" + platform::SystemMessage(error));
  return !error;
}

void FolderCommands::ChangeRoot(ServiceKind service) {
  const bool isWeb = service == ServiceKind::kWeb;
  const char* title = isWeb ? "选择Web服务器的主目录" : "请选择FTP的站点位置";
  const std::string root = manager_->control.Of(service).RootDir();
  const auto folder = ChooseFolder(&window_, title, platform::PathTextForUser(root));
  if (!folder || folder->empty()) return;
  const bool saved = isWeb ? Save(ModWeb::kSettingsSection, ModWeb::kRootKey, *folder)
                           : Save(ModFtp::kSettingsSection, ModFtp::kRootKey, *folder);
  if (saved) onChanged_(service);
}

void FolderCommands::MakeUploadFolder() {
  const std::string folder = ModCommon::AddSlash(manager_->ftp.RootDir()) + "upload";
  if (!MakeFolder(folder)) return;
  const std::string shown = platform::PathTextForUser(folder);
  if (!Save(ModFtp::kSettingsSection, ModFtp::kUploadDirKey, shown)) return;
  onChanged_(ServiceKind::kFtp);
}

// `folder` is in the user's own form.
bool FolderCommands::Save(std::string_view section, std::string_view key,
                          const std::string& folder) {
  if (folder.size() > kLongestPath) {
    Warn(&window_, "这个文件夹的路径太长，请选择路径较短的文件夹。");
    return false;
  }
  settings::Change change(manager_->program);
  change.In(section).Write(key, folder);
  return IsSaved(&window_, manager_->program, change.Save());
}

SharedFolder::Questions FolderCommands::Questions() {
  return {.chooseFiles = [this] { return AskFilesToOpen(&window_, "选择要添加的文件"); },
          .mayAsk = [this] { return MayAsk(); },
          .mayReplace = [this](const std::string& path) { return AskToReplace(&window_, path); }};
}

// Neither from behind a hidden window nor over another dialog.
bool FolderCommands::MayAsk() const {
  return window_.IsShown() && !window_.IsIconized() &&
         std::none_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(), [](wxWindow* each) {
           const auto* dialog = wxDynamicCast(each, wxDialog);
           return dialog != nullptr && dialog->IsModal();
         });
}

}  // namespace ui
