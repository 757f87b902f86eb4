#include "ui/window/commands.h"

#include <wx/frame.h>

#include <string>
#include <utility>

#include "core/activity_text.h"
#include "core/hosts_file.h"
#include "core/protection.h"
#include "core/service_addresses.h"
#include "core/service_texts.h"
#include "core/who_is_connected.h"
#include "files/files.h"
#include "platform/native_path.h"
#include "platform/shell.h"
#include "platform/system_message.h"
#include "settings/autostart.h"
#include "settings/change.h"
#include "settings/server_ini.h"
#include "ui/controls/clipboard.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/about_box.h"
#include "ui/dialogs/answer_question.h"
#include "ui/dialogs/cut_off_question.h"
#include "ui/dialogs/domain_questions.h"
#include "ui/dialogs/help_box.h"
#include "ui/dialogs/options_dialog.h"
#include "ui/dialogs/protection_dialog.h"
#include "ui/dialogs/qr_dialog.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"
#include "ui/dialogs/start_with_system.h"
#include "ui/dialogs/tip_of_the_day.h"
#include "ui/dialogs/virtual_directory_dialog.h"
#include "ui/pages/latest_log.h"
#include "ui/pages/problems_frame.h"
#include "ui/pages/service_looks.h"
#include "ui/window/content.h"
#include "ui/window/status_bar.h"
#include "ui/window/survey.h"
#include "web/web_server.h"

namespace ui {
namespace {

using core::ServiceKind;

// The order in which all services are started.
constexpr ServiceKind kStartOrder[] = {ServiceKind::kWeb, ServiceKind::kMail, ServiceKind::kFtp};

constexpr const char* kErrorLog = "RunErr.Log";

}  // namespace

void Commands::ActOn(Content& content, Survey& survey) {
  content_ = &content;
  survey_ = &survey;
  folders_.ActOn(content);
  mail_.ActOn(content);
}

void Commands::Attach(const Manager& manager) {
  manager_ = &manager;
  folders_.Attach(manager);
  mail_.Attach(manager);
  for (const ServiceKind service : core::kServices) {
    ShowRootDir(service);
    ShowSettingsFault(service);
    const char* log = LooksOf(service).log;
    content_->FrameOf(service).Log().SetLog(manager.program.File(log), log);
  }
  content_->fraProblems->SetLog(manager.program.File(kErrorLog));
  survey_->ShowFirstSteps();
}

void Commands::ShowPage(wxWindow* page) {
  content_->ShowPage(page);
  survey_->LookAnew();
}

void Commands::SelectWelcome() { ShowPage(content_->fraWelcome); }

void Commands::SelectService(ServiceKind service) {
  content_->FrameOf(service).SetHostNames(core::HostNames(core::HostsFile()));
  Load(service);
  folders_.ShowContent(service);
  if (service == ServiceKind::kMail) mail_.LoadUsers();
  ShowPage(&content_->FrameOf(service));
}

void Commands::SelectProblems() { ShowPage(content_->fraProblems); }

void Commands::OpenErrorLog() {
  const std::string log = manager_->program.File(kErrorLog);
  if (!ModCommon::FileExists(log)) return status_.Remark("还没有记录文件。");
  platform::OpenWithShell(platform::PathTextForUser(log));
}

// Reloads the settings and shows what is now in force. A running service keeps its ports.
void Commands::Load(ServiceKind service) {
  core::Service& server = manager_->control.Of(service);
  const std::string before = server.Domain();
  server.LoadOptions();
  if (server.Domain() != before) ShowDomain(service);
  ShowSettingsFault(service);
  ShowRootDir(service);
  survey_->Reach().EndTest(service);
  survey_->Reach().Show(service);
  survey_->Reach().ShowDomainRemark(service);
}

void Commands::ShowDomain(ServiceKind service) {
  if (!content_->FrameOf(service).ShowsAddress()) return;
  const core::Service& server = manager_->control.Of(service);
  const std::string address = server.IsRunning()
                                  ? core::AddressText(service, server.Domain())
                                  : core::AddressTextWhenStopped(service, server.Domain());
  content_->FrameOf(service).SetAddress(address);
  content_->fraWelcome->SetAddress(service, address);
}

void Commands::Start(ServiceKind service) {
  manager_->control.Start(service);
  ShowContentIfSeen(service);
}

void Commands::ShowContentIfSeen(ServiceKind service) {
  if (content_->FrameOf(service).IsShown()) folders_.ShowContent(service);
}

void Commands::Stop(ServiceKind service) {
  if (MayCutOff({service}, "停止服务")) manager_->control.Stop(service);
}

void Commands::Restart(ServiceKind service) {
  if (!MayCutOff({service}, "重新启动服务")) return;
  manager_->control.Stop(service);
  if (!running_[core::IndexOf(service)]) Start(service);
}

void Commands::StartAll() {
  for (const ServiceKind service : kStartOrder) {
    if (!running_[core::IndexOf(service)]) Start(service);
  }
}

void Commands::StopAll() {
  if (!MayCutOff({core::kServices.begin(), core::kServices.end()}, "停止服务")) return;
  for (const ServiceKind service : kStartOrder) {
    if (running_[core::IndexOf(service)]) manager_->control.Stop(service);
  }
}

bool Commands::MayEnd() {
  return MayCutOff({core::kServices.begin(), core::kServices.end()}, "退出");
}

bool Commands::MayCutOff(const std::vector<ServiceKind>& services, const std::string& action) {
  std::vector<net::ConnectionReport> connections;
  for (const ServiceKind service : services) {
    const auto open = manager_->control.Of(service).Connections();
    connections.insert(connections.end(), open.begin(), open.end());
  }
  return ui::MayCutOff(&window_, core::WhoIsConnected(connections), action);
}

void Commands::OpenAddress(ServiceKind service) {
  if (!content_->FrameOf(service).ShowsRunning()) return;
  const std::string url = core::LocalUrl(service, manager_->control.Of(service));
  if (!url.empty()) {
    platform::OpenWithShell(url);
    return;
  }
  // No program opens a mail server; its address goes into the settings of a mail client.
  const std::string address = core::AddressText(service, manager_->control.Of(service).Domain());
  if (CopyToClipboard(address)) status_.Remark("邮件服务器地址已复制。");
}

// Also shown before the first start, and while a service is running with the settings in memory.
void Commands::ShowSettingsFault(ServiceKind service) {
  std::error_code fault;
  settings::ReadSettings(manager_->program, fault);
  const bool wasShown =
      std::exchange(shownFault_[core::IndexOf(service)], static_cast<bool>(fault));
  if (!fault && !wasShown) return;
  const auto diagnosis = fault ? std::optional(core::ExplainSettings(fault)) : std::nullopt;
  content_->FrameOf(service).SetDiagnosis(diagnosis);
  if (manager_->control.Of(service).IsRunning()) return;
  content_->fraWelcome->SetDiagnosis(service, diagnosis);
}

void Commands::Follow(ServiceKind service, const core::Diagnosis& diagnosis) {
  using Remedy = core::Diagnosis::Remedy;
  if (diagnosis.remedy == Remedy::kChangePort) return ShowOptionsAt(service, diagnosis.port);
  if (diagnosis.remedy == Remedy::kCopyCommand) return CopyForUser(diagnosis.command);
  if (!running_[core::IndexOf(service)]) Start(service);
}

void Commands::CopyForUser(const std::string& text) {
  if (CopyToClipboard(text)) status_.Remark("已复制。");
}

void Commands::GiveAddress(const std::string& address) {
  if (!CopyToClipboard(address)) return;
  status_.Remark("已复制 " + address);
  FirstSteps::RememberAddressGiven();
  survey_->ShowFirstSteps();
}

void Commands::GiveFirstAddress() {
  const std::optional<std::string> address = survey_->Reach().AddressToGive();
  if (address) return GiveAddress(*address);
  const bool runs = std::find(running_.begin(), running_.end(), true) != running_.end();
  status_.Remark(runs ? "这台电脑没有连接到网络，没有能给别人的地址。" : "请先启动服务。");
}

void Commands::TestReach(ServiceKind service) { survey_->Reach().Test(service); }

void Commands::ShowConnected() {
  const auto connections = [this](ServiceKind service) {
    return manager_->control.Of(service).Connections().size();
  };
  const ServiceKind busiest = *std::max_element(
      core::kServices.begin(), core::kServices.end(),
      [&](ServiceKind a, ServiceKind b) { return connections(a) < connections(b); });
  if (connections(busiest) == 0) return status_.Remark("现在没有人连接。");
  SelectService(busiest);
  content_->FrameOf(busiest).ShowLiveTab();
  survey_->LookAnew();
}

void Commands::Disconnect(ServiceKind service, const net::ConnectionReport& connection) {
  manager_->control.Of(service).Disconnect(connection.protocol, connection.slot);
  survey_->LookAnew();
}

void Commands::ExportRecent(ServiceKind service) {
  const auto file = AskFileToSave(&window_, "导出最近的活动", "CSV文件(*.csv)|*.csv", "活动.csv");
  if (!file) return;
  const std::string table = core::CsvOf(manager_->record.EntriesOf(service));
  const std::error_code error = files::ReplaceContent(*file, table);
  if (error) Warn(&window_, "活动未能导出：" + platform::SystemMessage(error));
}

void Commands::ShowQrCode(const std::vector<std::string>& addresses) {
  FirstSteps::RememberAddressGiven();
  survey_->ShowFirstSteps();
  frmQrCode(&window_, addresses).ShowModal();
}

void Commands::AskForDomain(ServiceKind service) {
  const auto domain = AskDomain(&window_, manager_->program, service);
  if (!domain) return;
  Load(service);
  const std::string address = core::AddressText(service, *domain);
  content_->FrameOf(service).SetAddress(address);
  content_->fraWelcome->SetAddress(service, address);
}

void Commands::ShowOptions(ServiceKind service) { ShowOptionsAt(service, std::nullopt); }

void Commands::ChangePort(ServiceKind service) {
  ShowOptionsAt(service, manager_->control.Of(service).PortsToUse().first);
}

void Commands::ShowOptionsAt(ServiceKind service, std::optional<int> wrongPort) {
  Load(service);
  if (AskForOptions(&window_, *manager_, service, wrongPort)) TakeOver(service);
  ShowRootDir(service);
}

void Commands::ChooseAnswers() {
  Load(ServiceKind::kWeb);
  if (AskForAnswers(&window_, *manager_)) TakeOver(ServiceKind::kWeb);
  ShowRootDir(ServiceKind::kWeb);
}

void Commands::AnswerForBrowsers() {
  Load(ServiceKind::kWeb);
  if (manager_->web.Options().answers.http) return survey_->ShowFirstSteps();
  if (!MayAnswerForBrowsers(&window_, core::CurrentPorts(manager_->web).first)) return;
  ModWeb::AnswerOptions answers = manager_->web.Options().answers;
  answers.http = true;
  settings::Change change(manager_->program);
  ModWeb::WriteAnswerOptions(change, manager_->program, answers);
  if (IsSaved(&window_, manager_->program, change.Save())) TakeOver(ServiceKind::kWeb);
}

// What is confirmed holds at once, whether the service is running or not. The reason of the last
// failed start may be gone.
void Commands::TakeOver(ServiceKind service) {
  content_->fraWelcome->SetDiagnosis(service, std::nullopt);
  content_->FrameOf(service).SetDiagnosis(std::nullopt);
  Load(service);
  ShowContentIfSeen(service);
  if (service == ServiceKind::kMail) mail_.LoadUsers();
  survey_->ShowFirstSteps();
}

void Commands::ShowGeneralOptions() {
  frmOptions dialog(&window_, manager_->program);
  dialog.SetIcons(window_.GetIcons());
  dialog.ShowModal();
}

// Even a cancelled dialog has loaded the settings anew.
void Commands::ShowProtection() {
  const bool wantedSignIn = manager_->protection.WantsSignIn();
  frmProtection(&window_, manager_->program, manager_->protection).ShowModal();
  mail_.AdaptPasswords(wantedSignIn, manager_->protection.WantsSignIn());
  ShowRootDir(ServiceKind::kFtp);
  survey_->ShowFirstSteps();
}

bool Commands::StartsWithSystem() const { return settings::StartsWithSystem(manager_->program); }

void Commands::ToggleStartWithSystem() {
  SetToStartWithSystem(&window_, manager_->program, !StartsWithSystem());
}

void Commands::AddVirtualDirectory() {
  frmEditDir dialog(&window_, manager_->program);
  dialog.SetTitle(Shown("添加虚拟目录"));
  dialog.ShowModal();
}

void Commands::PutPage() {
  if (!files::FolderExists(manager_->web.RootDir())) MakeRoot(ServiceKind::kWeb);
  OpenRoot(ServiceKind::kWeb);
}

void Commands::ShowHelp() { ui::ShowHelp(&window_, manager_->program); }

void Commands::ShowAbout() { frmAbout(&window_).ShowModal(); }

void Commands::ShowTips() {
  if (!frmTip::ShowNext(&window_, manager_->program))
    status_.Remark("没有找到提示文件 TIPOFDAY.TXT。");
}

}  // namespace ui
