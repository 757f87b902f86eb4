#include "ui/window/failure.h"

#include "platform/listening_port.h"
#include "platform/native_path.h"
#include "platform/program_location.h"

namespace ui {

std::optional<core::Diagnosis> Diagnose(const core::Outcome& outcome) {
  const std::optional<core::StartFailure>& failure = outcome.failure;
  if (!failure) return std::nullopt;
  std::optional<platform::PortOwner> owner;
  if (platform::TroubleOf(failure->reason) == platform::ListenTrouble::kPortTaken) {
    owner = platform::WhoListensOn(static_cast<std::uint16_t>(failure->port));
  }
  return core::Explain(*failure, owner,
                       platform::PathTextForUser(platform::PathText(platform::ExecutablePath())));
}

}  // namespace ui
