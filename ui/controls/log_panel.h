#pragma once

// A log with its buttons, as the options of a service show it: the lines that the log has when the
// panel is made, of a large one the last part with a line that says so, of a long
// line the beginning. Clearing deletes the log.

#include <wx/listctrl.h>
#include <wx/panel.h>

#include <string>

#include "files/log_tail.h"

class wxButton;
class wxStaticText;

namespace ui {

/// Asks for the text of a line when it comes into view, so that their number costs nothing.
class LogList : public wxListCtrl {
 public:
  explicit LogList(wxWindow* parent);

  void SetTail(files::LogTail tail);
  const files::LogTail& Tail() const { return tail_; }
  bool IsEmpty() const { return tail_.lines.empty(); }

 private:
  wxString OnGetItemText(long item, long column) const override;
  void FitColumn();

  files::LogTail tail_;
};

class LogPanel : public wxPanel {
 public:
  /// `log`: a path text.
  LogPanel(wxWindow* parent, std::string log);

  LogList* lstLog;
  wxStaticText* lblLogPart;
  wxButton* cmdClearLog;
  wxButton* cmdExportLog;

 private:
  void Load(files::LogTail tail);
  void OnClear();
  void OnExport();

  std::string log_;
};

}  // namespace ui
