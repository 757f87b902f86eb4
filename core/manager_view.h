#pragma once

// What service control shows of a service, whoever shows it: the main window, a console, or a
// recorder in a test. A view is told of every change and decides nothing.

#include <string>

#include "core/service.h"

namespace core {

class ManagerView {
 public:
  virtual ~ManagerView() = default;

  /// lblWebStart, lblFtpStart, lblMailStart.
  virtual void SetResult(ServiceKind service, const std::string& text) = 0;

  /// lblWebAddress, lblFtpAddress, lblMailAddress. Enabled with the hand pointer while it runs.
  virtual void SetAddress(ServiceKind service, const std::string& text) = 0;
  virtual void EnableAddress(ServiceKind service, bool enabled) = 0;

  /// lblWebInfo, lblFtpInfo, lblMailInfo.
  virtual void SetHint(ServiceKind service, const std::string& text) = 0;

  /// lblWebRootDir, lblMailRootDir; a path in the user's own form.
  virtual void SetRootDir(ServiceKind service, const std::string& path) = 0;

  /// The visible one of the start and the stop button.
  virtual void ShowButtons(ServiceKind service, bool running) = 0;

  /// The start and the stop item of the tray menu.
  virtual void SwitchMenuItems(ServiceKind service, bool running) = 0;

  /// Where a start failed because Server.ini cannot be used: that, in a line. The window makes more
  /// of it by itself (core/start_diagnosis.h).
  virtual void TellSettingsFault(ServiceKind, const std::string&) {}

  /// The service's panel of stbInfo: its text and its ON or OFF picture.
  virtual void SetStatusPanel(ServiceKind service, bool on, const std::string& text) = 0;
};

}  // namespace core
