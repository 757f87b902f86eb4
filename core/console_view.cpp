#include "core/console_view.h"

#include "core/service_texts.h"
#include "core/start_diagnosis.h"
#include "platform/listening_port.h"
#include "platform/native_path.h"
#include "platform/program_location.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace core {
namespace {

// In one line.
std::string ReasonText(ServiceKind service, const StartFailure& failure) {
  if (failure.settings) return SettingsFaultText(failure.reason);
  PortUser user;
  if (platform::TroubleOf(failure.reason) == platform::ListenTrouble::kPortTaken) {
    user.process = platform::WhoListensOn(static_cast<std::uint16_t>(failure.port));
  }
  const std::string executable =
      platform::PathTextForUser(platform::PathText(platform::ExecutablePath()));
  const Diagnosis diagnosis = Explain(service, failure, user, {.executable = executable});
  const std::string brief = text::ReplaceAll(diagnosis.brief, "\n", "");
  return diagnosis.command.empty() ? brief + "。" : brief + "：" + diagnosis.command;
}

}  // namespace

void ConsoleView::ShowOutcome(const Outcome& outcome) {
  Print(TextsOf(outcome).result + outcome.address);
  Print(StatusText(outcome));
  if (outcome.failure) Print(ReasonText(outcome.service, *outcome.failure));
}

void ConsoleView::Print(const std::string& line) {
  const std::string bytes = text::ToSystem(line) + "\n";
  std::fwrite(bytes.data(), 1, bytes.size(), stream_);
  // The stream may be a file or pipe that is being watched.
  std::fflush(stream_);
}

}  // namespace core
