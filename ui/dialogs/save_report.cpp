#include "ui/dialogs/save_report.h"

#include "core/start_diagnosis.h"
#include "platform/system_message.h"

namespace ui {

bool IsSaved(wxWindow* parent, const settings::Program& program, const std::error_code& error,
             const char* title) {
  if (!error) return true;
  program.errors.LogError("Settings not saved: " + platform::SystemMessage(error));
  Warn(parent, core::UnsavedText(error), title);
  return false;
}

}  // namespace ui
