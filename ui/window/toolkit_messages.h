#pragma once

// What the toolkit has to say about itself: failed assertions, and errors and warnings that it
// logs. By default it shows them in boxes of its own, in English, and one of them can end the
// program. A user has no use for them; they are lines in the error log.

#include <wx/log.h>

#include <memory>

#include "files/logs.h"

namespace ui {

/// While this lives, the toolkit's messages go to the error log. One at a time.
class ToolkitMessages {
 public:
  explicit ToolkitMessages(const files::ErrorLog& errors);
  ~ToolkitMessages();
  ToolkitMessages(const ToolkitMessages&) = delete;
  ToolkitMessages& operator=(const ToolkitMessages&) = delete;

 private:
  std::unique_ptr<wxLog> target_;
  wxLog* formerTarget_;
  wxAssertHandler_t formerHandler_;
};

}  // namespace ui
