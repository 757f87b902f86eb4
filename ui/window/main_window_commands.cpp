// What the main window does when the user asks for it.

#include <wx/clipbrd.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <string>
#include <utility>

#include "core/service_texts.h"
#include "files/files.h"
#include "mail/mail_accounts.h"
#include "platform/listening_port.h"
#include "platform/native_path.h"
#include "platform/program_location.h"
#include "platform/shell.h"
#include "platform/system_message.h"
#include "settings/server_ini.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/about_box.h"
#include "ui/dialogs/domain_questions.h"
#include "ui/dialogs/ftp_options_dialog.h"
#include "ui/dialogs/help_box.h"
#include "ui/dialogs/login_dialog.h"
#include "ui/dialogs/mail_options_dialog.h"
#include "ui/dialogs/mail_user_dialog.h"
#include "ui/dialogs/options_dialog.h"
#include "ui/dialogs/tip_of_the_day.h"
#include "ui/dialogs/virtual_directory_dialog.h"
#include "ui/dialogs/web_options_dialog.h"
#include "ui/pages/folder_tree.h"
#include "ui/pages/mail_user_list.h"
#include "ui/pages/service_looks.h"
#include "ui/window/main_window.h"
#include "ui/window/status_bar.h"

namespace ui {
namespace {

using core::ServiceKind;

// The order in which services are started together.
constexpr ServiceKind kStartOrder[] = {ServiceKind::kWeb, ServiceKind::kMail, ServiceKind::kFtp};

bool Copy(const std::string& text) {
  wxClipboardLocker clipboard;
  return !!clipboard && wxTheClipboard->SetData(new wxTextDataObject(Shown(text)));
}

}  // namespace

void frmMain::SelectService(ServiceKind service) {
  manager_->control.Of(service).LoadOptions();
  ShowSettingsFault(service);
  ShowRootDir(service);
  if (service == ServiceKind::kWeb) RefreshTree();
  if (service == ServiceKind::kMail) LoadMailUsers();
  ShowPage(&FrameOf(service));
}

void frmMain::ShowRootDir(ServiceKind service) {
  SetRootDir(service, platform::PathTextForUser(manager_->control.Of(service).RootDir()));
}

void frmMain::Start(ServiceKind service) {
  StartService(*manager_, service);
  if (service == ServiceKind::kWeb && fraWeb->IsShown()) RefreshTree();
}

void frmMain::Stop(ServiceKind service) { StopService(*manager_, service); }

void frmMain::StartAll() {
  for (const ServiceKind service : kStartOrder) {
    if (!running_[IndexOf(service)]) Start(service);
  }
}

void frmMain::StopAll() {
  for (const ServiceKind service : kStartOrder) {
    if (running_[IndexOf(service)]) Stop(service);
  }
}

// The labels show no port; what is opened has one.
void frmMain::OpenAddress(ServiceKind service) {
  if (!FrameOf(service).ShowsRunning()) return;
  const std::string domain = manager_->control.Of(service).Domain();
  switch (service) {
    case ServiceKind::kWeb:
      platform::OpenWithShell("http://" + domain + ":" +
                              std::to_string(manager_->web.Options().WebPort));
      return;
    case ServiceKind::kFtp:
      platform::OpenWithShell("ftp://" + domain + ":" +
                              std::to_string(manager_->ftp.Options().ftpPort));
      return;
    case ServiceKind::kMail:
      // Nothing opens a mail server; its address is for the settings of a mail program.
      if (Copy(core::AddressText(service, domain))) stbInfo->Remark("邮件服务器地址已复制。");
      return;
  }
}

void frmMain::OpenRoot(ServiceKind service) {
  const std::string root = manager_->control.Of(service).RootDir();
  if (!files::FolderExists(root)) return stbInfo->Remark("主目录不存在。");
  platform::OpenWithShell(platform::PathTextForUser(root));
}

void frmMain::MakeRoot(ServiceKind service) {
  const std::string root = manager_->control.Of(service).RootDir();
  std::error_code error;
  std::filesystem::create_directories(platform::ExistingPath(root), error);
  if (error) stbInfo->Remark("文件夹未能建立：" + platform::SystemMessage(error));
  ShowRootDir(service);
  if (service == ServiceKind::kWeb) RefreshTree();
}

std::optional<core::Diagnosis> frmMain::Diagnose(ServiceKind service) {
  const auto failure = manager_->control.Of(service).LastFailure();
  if (!failure) return std::nullopt;
  std::optional<platform::PortOwner> owner;
  if (platform::TroubleOf(failure->reason) == platform::ListenTrouble::kPortTaken) {
    owner = platform::WhoListensOn(static_cast<std::uint16_t>(failure->port));
  }
  return core::Explain(*failure, owner,
                       platform::PathTextForUser(platform::PathText(platform::ExecutablePath())));
}

// Told before anything is started, and while a service runs with what it has in memory.
void frmMain::ShowSettingsFault(ServiceKind service) {
  std::error_code fault;
  settings::ReadSettings(manager_->program, fault);
  const bool wasShown = std::exchange(shownFault_[IndexOf(service)], static_cast<bool>(fault));
  if (!fault && !wasShown) return;
  const auto diagnosis = fault ? std::optional(core::ExplainSettings(fault)) : std::nullopt;
  FrameOf(service).SetDiagnosis(diagnosis);
  if (manager_->control.Of(service).IsRunning()) return;
  fraWelcome->SetReason(service, diagnosis ? diagnosis->brief : "");
}

void frmMain::Follow(ServiceKind service, const core::Diagnosis& diagnosis) {
  if (diagnosis.remedy == core::Diagnosis::Remedy::kChangeOptions) return ShowOptions(service);
  CopyForUser(diagnosis.command);
}

void frmMain::CopyForUser(const std::string& text) {
  if (Copy(text)) stbInfo->Remark("已复制。");
}

void frmMain::AskForDomain(ServiceKind service) {
  const auto domain = AskDomain(this, manager_->program, service);
  if (domain) SetAddress(service, core::AddressText(service, *domain));
}

void frmMain::ShowOptions(ServiceKind service) {
  manager_->control.Of(service).LoadOptions();
  ShowSettingsFault(service);
  if (AskForOptions(service) && !manager_->control.Of(service).IsRunning()) TakeOver(service);
  ShowRootDir(service);
  ShowReach(service);
  ShowFirstSteps();
}

bool frmMain::AskForOptions(ServiceKind service) {
  switch (service) {
    case ServiceKind::kWeb:
      return frmWebOptions(this, manager_->program, manager_->web).ShowModal() == wxID_OK;
    case ServiceKind::kFtp:
      return frmFtpOptions(this, manager_->program, manager_->ftp).ShowModal() == wxID_OK;
    case ServiceKind::kMail:
      return frmMailOptions(this, manager_->program, manager_->mail).ShowModal() == wxID_OK;
  }
  return false;
}

// What was wrong with the last start may be right now. A running service goes on as it was started.
void frmMain::TakeOver(ServiceKind service) {
  manager_->control.Of(service).LoadOptions();
  fraWelcome->SetReason(service, "");
  FrameOf(service).SetDiagnosis(std::nullopt);
  if (service == ServiceKind::kWeb && fraWeb->IsShown()) RefreshTree();
  if (service == ServiceKind::kMail) LoadMailUsers();
}

// From the tray, too, only with the password, which can be taken away here.
void frmMain::ShowGeneralOptions() {
  if (!IsShown() && (asking_ || !MayOpen())) return;
  frmOptions dialog(this, manager_->program);
  dialog.SetIcons(GetIcons());
  dialog.ShowModal();
}

void frmMain::AddVirtualDirectory() {
  frmEditDir dialog(this, manager_->program);
  dialog.SetTitle(Shown("添加虚拟目录"));
  dialog.ShowModal();
}

void frmMain::RefreshTree() { tvWebDir->ShowFolder(manager_->web.RootDir()); }

void frmMain::LoadMailUsers() {
  lvMailUser->LoadMailUsers(manager_->mail.RootDir());
  ShowMessagesOfSelected();
}

// In sight before the user is deleted: the question does not say it.
void frmMain::ShowMessagesOfSelected() {
  const long row = lvMailUser->SelectedRow();
  std::string text = " ";
  if (row >= 0) {
    const std::string name = lvMailUser->UserAt(row).name;
    const std::size_t messages = ModMail::MessagesOf(manager_->mail.RootDir(), name);
    text = messages == 0 ? "用户“" + name + "”没有邮件。"
                         : "用户“" + name + "”有 " + std::to_string(messages) +
                               " 封邮件，删除用户时会一起删除。";
  }
  lblMessages->SetLabel(Shown(text));
}

void frmMain::PutPage() {
  if (!files::FolderExists(manager_->web.RootDir())) MakeRoot(ServiceKind::kWeb);
  OpenRoot(ServiceKind::kWeb);
}

void frmMain::AddMailUser() {
  frmEmailUsers(this, manager_->program, manager_->mail).ShowModal();
  LoadMailUsers();
}

void frmMain::EditMailUser() {
  if (lvMailUser->GetItemCount() == 0) return;
  const ModMail::MailUser user = lvMailUser->UserAt(std::max(lvMailUser->SelectedRow(), 0L));
  frmEmailUsers dialog(this, manager_->program, manager_->mail);
  dialog.SetTitle(Shown("编辑用户"));
  dialog.txtUser->SetValue(Shown(user.name));
  dialog.txtPass->SetValue(Shown(user.password));
  dialog.ShowModal();
  LoadMailUsers();
}

void frmMain::DeleteMailUser() {
  const long row = lvMailUser->SelectedRow();
  if (row < 0) return Warn(this, "请选择要删除的用户！");
  if (!Confirm(this, "确实要删除该用户吗？")) return;
  ModMail::RemoveMailUser(manager_->mail.RootDir(), lvMailUser->UserAt(row).name,
                          manager_->program.errors);
  lvMailUser->DeleteItem(row);
  ShowMessagesOfSelected();
}

void frmMain::ShowHelp() { ui::ShowHelp(this, manager_->program); }

void frmMain::ShowAbout() { frmAbout(this).ShowModal(); }

void frmMain::ShowTips() {
  if (!frmTip::ShowNext(this, manager_->program))
    stbInfo->Remark("没有找到提示文件 TIPOFDAY.TXT。");
}

void frmMain::OnMenu(wxCommandEvent& event) {
  switch (event.GetId()) {
    case mnuStartWeb:
      return Start(ServiceKind::kWeb);
    case mnuStopWeb:
      return Stop(ServiceKind::kWeb);
    case mnuStartFtp:
      return Start(ServiceKind::kFtp);
    case mnuStopFtp:
      return Stop(ServiceKind::kFtp);
    case mnuStartMail:
      return Start(ServiceKind::kMail);
    case mnuStopMail:
      return Stop(ServiceKind::kMail);
    case mnuViewWelcome:
      SelectWelcome();
      return Open();
    case mnuViewWeb:
      SelectService(ServiceKind::kWeb);
      return Open();
    case mnuViewFtp:
      SelectService(ServiceKind::kFtp);
      return Open();
    case mnuViewEmail:
      SelectService(ServiceKind::kMail);
      return Open();
    case mnuShowFrmMain:
      return Open();
    case mnuShowSystemTray:
      return GoToTray();
    case mnuOptions:
      return ShowGeneralOptions();
    case mnuHelpTopic:
      return ShowHelp();
    case mnuTips:
      return ShowTips();
    case mnuAbout:
      return ShowAbout();
    case mnuExit:
      return onClose_();
    default:
      event.Skip();
  }
}

}  // namespace ui
