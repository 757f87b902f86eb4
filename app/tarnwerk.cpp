#include "app/tarnwerk.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/first_start.h"
#include "core/activity_record.h"
#include "core/firewall.h"
#include "core/hosts_file.h"
#include "core/protection.h"
#include "core/service_addresses.h"
#include "core/service_environment.h"
#include "mail/password_queue.h"
#include "net/termination_signals.h"
#include "platform/native_path.h"
#include "platform/program_location.h"
#include "platform/shell.h"
#include "platform/standard_streams.h"
#include "settings/registry.h"

namespace app {
namespace {

constexpr std::chrono::seconds kStopPatience{30};
constexpr const char* kProgramKey = "Software\\VEQ\\通用系统";

std::unique_ptr<Frontend> MakeFrontend(const settings::Program& program) {
  auto window = MakeWindowFrontend(program);
  return window ? std::move(window) : MakeConsoleFrontend();
}

}  // namespace

struct Tarnwerk::Running {
  explicit Running(const settings::Program& program)
      : frontend(MakeFrontend(program)),
        protection(program),
        environment{program, frontend->Loop(), core::HostsFile(), protection},
        passwords(environment, [this] { return mail.RootDir(); }),
        web(environment),
        ftp(environment),
        mail(environment),
        control(program, {web, ftp, mail}, frontend->View()),
        signals(frontend->Loop()) {
    protection.SetAccounts(passwords);
    frontend->Loop().OnError(
        [&program](const std::string& error) { program.errors.LogError(error); });
  }

  // Declared in this order because the services must be destroyed before the loop, and before what
  // their clients sign in with.
  std::unique_ptr<Frontend> frontend;
  core::ActivityRecord record;
  core::Protection protection;
  core::ServiceEnvironment environment;
  ModMail::PasswordQueue passwords;
  ModWeb::WebServer web;
  ModFtp::FtpServer ftp;
  ModMail::MailServer mail;
  core::ServiceControl control;
  net::TerminationSignals signals;
};

Tarnwerk::Tarnwerk(const settings::Program& program) : program_(program) {}

Tarnwerk::~Tarnwerk() {
  // It listens on the loop in running_, so it must go first.
  instance_.reset();
}

Tarnwerk::Running& Tarnwerk::Made() {
  if (running_) return *running_;
  running_ = std::make_unique<Running>(program_);
  // A page can be opened before its service has ever run.
  running_->web.LoadOptions();
  running_->ftp.LoadOptions();
  running_->mail.LoadOptions();
  const auto close = [this] { Close(); };
  running_->frontend->Attach(
      {program_, running_->control, running_->web, running_->ftp, running_->mail, running_->record,
       running_->frontend->Loop(), running_->protection},
      close);
  running_->signals.OnFirst(close);
  instance_->OnCloseRequest(running_->frontend->Loop().Executor(), close);
  instance_->OnStartRequest(running_->frontend->Loop().Executor(),
                            [this] { running_->control.StartStopped(); });
  return *running_;
}

void Tarnwerk::Run() {
  Made();
  if (ServesInVain()) {
    succeeded_ = false;
    platform::SayOnStandardError("Tarnwerk: 没有一项服务能够启动，程序结束。");
    return Close();
  }
  running_->frontend->Run();
}

bool Tarnwerk::ServesInVain() {
  if (!shouldServe_ || running_->frontend->HasWindow()) return false;
  return std::none_of(
      core::kServices.begin(), core::kServices.end(),
      [this](core::ServiceKind service) { return running_->control.Of(service).IsRunning(); });
}

void Tarnwerk::Close() {
  running_->control.CloseAll();
  proxy_.KeepOff();
  running_->frontend->End();
}

void Tarnwerk::AuthorizeInFirewall() { modFirewall::AuthorizeInFirewall(program_); }

void Tarnwerk::CloseRunningInstance() {
  succeeded_ = platform::CloseRunningInstances(kStopPatience);
  if (!succeeded_)
    platform::SayOnStandardError("Tarnwerk: not every running instance could be closed");
}

bool Tarnwerk::BecomeRunningInstance() {
  instance_ =
      platform::RunningInstance::Announce(platform::ExecutablePath(), platform::ProgramDirectory());
  if (!instance_) {
    if (platform::HandsStartOver()) HandStartOver();
    return false;
  }
  FillNewProgramDirectory();
  return true;
}

void Tarnwerk::HandStartOver() {
  succeeded_ = platform::AskToStart(platform::ExecutablePath(), platform::ProgramDirectory());
  if (!succeeded_) {
    platform::SayOnStandardError(
        "Tarnwerk: the running instance cannot be asked to start services");
  }
}

void Tarnwerk::RecordProgramPath() {
  std::string_view directory = program_.directory;
  if (directory.ends_with('\\')) directory.remove_suffix(1);  // only a root directory ends in one
  try {
    Modreg::Key key = Modreg::CreateKey(Modreg::Root::kLocalMachine, kProgramKey);
    Modreg::SetText(key, "TARNPath", platform::PathTextForUser(directory));
  } catch (const Modreg::Error&) {
    return;  // usual for users without the right to write there; no reason not to serve
  }
}

void Tarnwerk::SwitchProxyOff() { proxy_.SwitchOff(); }

void Tarnwerk::StartServices() {
  shouldServe_ = true;
  Made().control.StartAll();
}

void Tarnwerk::GoToTray() { Made().frontend->GoToTray(); }

void Tarnwerk::ShowMainWindow() { Made().frontend->ShowMainWindow(); }

void Tarnwerk::OpenWebAddress() {
  platform::OpenWithShell(core::LocalUrl(core::ServiceKind::kWeb, Made().web));
}

}  // namespace app
