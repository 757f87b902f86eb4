#pragma once

// A log with its buttons, for the options of a service. It shows the lines that the log has when
// the panel is created: of a large log the last part, with a note; of a long line the beginning.
// "Clear" deletes the log.

#include <wx/listctrl.h>
#include <wx/panel.h>

#include <string>

#include "files/log_tail.h"

class wxButton;
class wxStaticText;

namespace ui {

/// A virtual list: only visible lines are converted, so their number costs nothing.
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
