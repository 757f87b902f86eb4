#pragma once

// What to type into a mail program to reach the mail server, ready to be copied, and what mail
// programs can and cannot do here. Changes nothing.

#include <wx/dialog.h>

#include <string>
#include <utility>
#include <vector>

class wxButton;
class wxTextCtrl;

namespace ui {

/// What a mail program asks for.
struct MailProgramSettings {
  std::string user;
  std::string password;
  std::string domain;
  std::vector<std::string> servers;  // the addresses of this computer, one at least
  int smtpPort = 0;
  int pop3Port = 0;
};

class frmMailSettings : public wxDialog {
 public:
  frmMailSettings(wxWindow* parent, const MailProgramSettings& settings);

  wxTextCtrl* txtNotes;
  wxButton* cmdCopyAll;

 private:
  wxSizer* MakeRows(const MailProgramSettings& settings);
  void AddRow(wxSizer& grid, const char* name, const char* label, const std::string& value);

  std::vector<std::pair<std::string, std::string>> rows_;  // label and value
};

}  // namespace ui
