#include "ui/window/manager.h"

namespace ui {

void StartService(const Manager& manager, core::ServiceKind service) {
  switch (service) {
    case core::ServiceKind::kWeb:
      return manager.control.cmdStartWebService();
    case core::ServiceKind::kFtp:
      return manager.control.cmdStartFtpService();
    case core::ServiceKind::kMail:
      return manager.control.cmdStartMailService();
  }
}

void StopService(const Manager& manager, core::ServiceKind service) {
  switch (service) {
    case core::ServiceKind::kWeb:
      return manager.control.cmdStopWebService();
    case core::ServiceKind::kFtp:
      return manager.control.cmdStopFtpService();
    case core::ServiceKind::kMail:
      return manager.control.cmdStopMailService();
  }
}

}  // namespace ui
