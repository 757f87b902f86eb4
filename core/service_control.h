#pragma once

// Turns the services on and off and shows the outcome: the handlers behind the start and stop
// buttons, the tray menu and the command line. On a start the outcome is also kept in startflg.dat.

#include <string>
#include <string_view>

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

  ServiceControl(const settings::Program& program, Services services, ManagerView& view)
      : program_(program), services_(services), view_(view) {}

  void cmdStartWebService();
  void cmdStopWebService();
  void cmdStartFtpService();
  void cmdStopFtpService();
  void cmdStartMailService();
  void cmdStopMailService();

  /// Web, mail, FTP.
  void StartAll();

  /// Stops what runs, without showing anything: the program is about to end.
  void CloseAll();

  Service& Of(ServiceKind service);

 private:
  void Start(ServiceKind service);
  void ShowStarted(ServiceKind service);
  void ShowStartFailed(ServiceKind service);
  void Stop(ServiceKind service);
  void ShowStopped(ServiceKind service);
  void ShowStopFailed(ServiceKind service);

  std::string AddressWhenStopped(ServiceKind service);

  /// `state` is "ON" or "OFF", `service` "WEB", "FTP" or "MAIL" in any case.
  void UpdateServiceStatus(std::string_view state, const std::string& text,
                           std::string_view service);
  void WriteStartFlag(ServiceKind key, bool started);

  const settings::Program& program_;
  Services services_;
  ManagerView& view_;
};

}  // namespace core
