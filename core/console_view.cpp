#include "core/console_view.h"

#include "text/code_page.h"

namespace core {
namespace {

std::size_t IndexOf(ServiceKind service) { return static_cast<std::size_t>(service); }

}  // namespace

void ConsoleView::SetResult(ServiceKind service, const std::string& text) {
  results_[IndexOf(service)] = text;
}

void ConsoleView::SetAddress(ServiceKind service, const std::string& text) {
  Print(results_[IndexOf(service)] + text);
}

void ConsoleView::SetStatusPanel(ServiceKind, bool, const std::string& text) { Print(text); }

void ConsoleView::Print(const std::string& line) {
  const std::string bytes = text::ToSystem(line) + "\n";
  std::fwrite(bytes.data(), 1, bytes.size(), stream_);
  // At once, also when the stream is a file or a pipe that somebody watches.
  std::fflush(stream_);
}

}  // namespace core
