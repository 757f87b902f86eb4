#pragma once

// The assembled program: the services, their control, and the steps at the start and the end.

#include <memory>
#include <optional>

#include "app/frontend.h"
#include "core/service_control.h"
#include "core/startup.h"
#include "core/system_proxy.h"
#include "ftp/ftp_server.h"
#include "mail/mail_server.h"
#include "platform/running_instance.h"
#include "settings/program.h"
#include "web/web_server.h"

namespace app {

class Tarnwerk : public core::StartupSteps {
 public:
  explicit Tarnwerk(const settings::Program& program);
  ~Tarnwerk() override;
  Tarnwerk(const Tarnwerk&) = delete;
  Tarnwerk& operator=(const Tarnwerk&) = delete;

  /// Serves until the program is closed. Without a window it returns at once, and has failed, if
  /// services were to start and none did: nobody could start one later.
  void Run();

  /// False if a step failed whose result can be checked.
  bool HasSucceeded() const { return succeeded_; }

  void AuthorizeInFirewall() override;
  void CloseRunningInstance() override;
  bool BecomeRunningInstance() override;
  void RecordProgramPath() override;
  void SwitchProxyOff() override;
  void StartServices() override;
  void GoToTray() override;
  void ShowMainWindow() override;
  void OpenWebAddress() override;

 private:
  // The loop, the view and everything that runs on them. Created only once the process is to keep
  // running: a "STOP" start and a second instance load none of it.
  struct Running;

  Running& Made();
  void Close();
  bool ServesInVain();
  void HandStartOver();

  const settings::Program& program_;
  core::SystemProxy proxy_;
  std::unique_ptr<platform::RunningInstance> instance_;
  std::unique_ptr<Running> running_;
  bool shouldServe_ = false;  // services were to start
  bool succeeded_ = true;
};

}  // namespace app
