#include "core/console_view.h"

#include "core/service_texts.h"
#include "core/start_diagnosis.h"
#include "text/code_page.h"

namespace core {

void ConsoleView::ShowOutcome(const Outcome& outcome) {
  Print(TextsOf(outcome).result + outcome.address);
  Print(StatusText(outcome));
  if (outcome.failure && outcome.failure->settings) {
    Print(SettingsFaultText(outcome.failure->reason));
  }
}

void ConsoleView::Print(const std::string& line) {
  const std::string bytes = text::ToSystem(line) + "\n";
  std::fwrite(bytes.data(), 1, bytes.size(), stream_);
  // The stream may be a file or pipe that is being watched.
  std::fflush(stream_);
}

}  // namespace core
