#include "ui/window/failure.h"

#include "platform/listening_port.h"
#include "platform/native_path.h"
#include "platform/program_location.h"
#include "ui/pages/service_looks.h"
#include "web/web_server.h"

namespace ui {
namespace {

// Empty if none of the program's services has the port.
std::string OwnServiceOn(int port, core::ServiceKind failed, core::ServiceControl& control) {
  for (const core::ServiceKind service : core::kServices) {
    const core::Ports ports = control.Of(service).PortsInUse();
    if (port == ports.first || port == ports.second) return LooksOf(service).title;
  }
  // The mail server has closed the port again that it opened first.
  const core::Ports wanted = control.Of(failed).PortsToUse();
  return wanted.first == wanted.second ? "SMTP 服务" : "";
}

}  // namespace

std::optional<core::Diagnosis> Diagnose(const core::Outcome& outcome, const Manager& manager) {
  const std::optional<core::StartFailure>& failure = outcome.failure;
  if (!failure) return std::nullopt;
  core::PortUser user;
  if (platform::TroubleOf(failure->reason) == platform::ListenTrouble::kPortTaken) {
    user = {.process = platform::WhoListensOn(static_cast<std::uint16_t>(failure->port)),
            .ownService = OwnServiceOn(failure->port, outcome.service, manager.control)};
  }
  return core::Explain(
      outcome.service, *failure, user,
      {.executable = platform::PathTextForUser(platform::PathText(platform::ExecutablePath())),
       .answersWithHttp = manager.web.Options().answers.http});
}

}  // namespace ui
