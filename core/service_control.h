#pragma once

// Starts and stops the services and reports the outcome to the view: the handlers behind the start
// and stop buttons, the tray menu and the command line. The outcome of a start is also saved in
// startflg.dat; a stop does not change that file.

#include <array>

#include "core/manager_view.h"
#include "core/service.h"
#include "settings/program.h"

namespace core {

class ServiceControl {
 public:
  struct Services {
    Service& web;
    Service& ftp;
    Service& mail;
  };

  /// The services and the view must outlive this object.
  ServiceControl(const settings::Program& program, Services services, ManagerView& view)
      : program_(program), services_{&services.web, &services.ftp, &services.mail}, view_(view) {}

  void cmdStartWebService() { Start(ServiceKind::kWeb); }
  void cmdStopWebService() { Stop(ServiceKind::kWeb); }
  void cmdStartFtpService() { Start(ServiceKind::kFtp); }
  void cmdStopFtpService() { Stop(ServiceKind::kFtp); }
  void cmdStartMailService() { Start(ServiceKind::kMail); }
  void cmdStopMailService() { Stop(ServiceKind::kMail); }

  /// The same for a service chosen at run time.
  void Start(ServiceKind service);
  void Stop(ServiceKind service);

  /// In the order Web, mail, FTP.
  void StartAll();

  /// The same, but leaves the running ones alone.
  void StartStopped();

  /// Stops the running services without telling the view, before the program ends.
  void CloseAll();

  Service& Of(ServiceKind service) { return *services_[IndexOf(service)]; }

 private:
  void ShowStarted(ServiceKind service);
  void ShowStartFailed(ServiceKind service);
  void ShowStopped(ServiceKind service);
  void ShowStopFailed(ServiceKind service);
  void WriteStartFlag(ServiceKind key, bool started);

  const settings::Program& program_;
  std::array<Service*, kServices.size()> services_;
  ManagerView& view_;
};

}  // namespace core
