#include "ui/window/toolkit_messages.h"

#include <string>

#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

class LogTarget : public wxLog {
 public:
  explicit LogTarget(const files::ErrorLog& errors) : errors_(errors) {}

 protected:
  void DoLogRecord(wxLogLevel level, const wxString& message, const wxLogRecordInfo&) override {
    if (level <= wxLOG_Warning) errors_.LogError("Window toolkit: " + Typed(message));
  }

 private:
  const files::ErrorLog& errors_;
};

const files::ErrorLog* errorLog = nullptr;  // a handler has no object of its own

void LogAssertion(const wxString& file, int line, const wxString& function,
                  const wxString& condition, const wxString& message) {
  errorLog->LogError("Window toolkit: " + Typed(file) + ":" + std::to_string(line) + ": " +
                     Typed(function) + ": assertion failed: " + Typed(condition) + ": " +
                     Typed(message));
}

}  // namespace

ToolkitMessages::ToolkitMessages(const files::ErrorLog& errors)
    : target_(std::make_unique<LogTarget>(errors)),
      formerTarget_(wxLog::SetActiveTarget(target_.get())),
      formerHandler_(wxSetAssertHandler(LogAssertion)) {
  errorLog = &errors;
}

ToolkitMessages::~ToolkitMessages() {
  wxSetAssertHandler(formerHandler_);
  wxLog::SetActiveTarget(formerTarget_);
  errorLog = nullptr;
}

}  // namespace ui
