#pragma once

// Shows a stored message: its headers, its text and its attachments, which can be opened and saved.
// Reading and copying go in pieces, so that a message of any size blocks nothing; closing the
// dialog cancels them.

#include <wx/dialog.h>
#include <wx/timer.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "mail/part_copy.h"
#include "mail/shown_message.h"

class wxButton;
class wxListCtrl;
class wxStaticText;
class wxTextCtrl;

namespace ui {

class frmMailMessage : public wxDialog {
 public:
  struct Actions {
    /// The path text of a new file in a place that is cleaned up later; empty if there is none.
    std::function<std::string(const std::string& name)> placeFor;
    /// Removes the file, after a question to the user. True if it is gone. `count`: the messages in
    /// it.
    std::function<bool(wxWindow& parent, std::size_t count)> remove;
  };

  frmMailMessage(wxWindow* parent, std::unique_ptr<ModMail::ShownMessage> message, Actions actions);

  wxTextCtrl* txtHeader;
  wxTextCtrl* txtText;
  wxListCtrl* lstAttachments;  // hidden if there are none, with its buttons
  wxButton* cmdOpenAttachment;
  wxButton* cmdSaveAttachment;
  wxStaticText* lblNote;
  wxButton* cmdNextMessage;  // of several in the same file
  wxButton* cmdDelMessage;

 private:
  void MakeControls();
  wxSizer* MakeAttachments();
  wxSizer* MakeButtons();
  void Work();
  void ShowMessage();
  void ShowAttachments();
  void ShowNote(const std::string& text);
  std::string NoteText() const;
  void EnableFitting();
  void OnNext();
  const ModMail::MimePart* Selected() const;
  void OnOpen();
  void OnSave();
  void Copy(const ModMail::MimePart& part, const std::string& path, bool opens);
  void EndCopy();

  std::unique_ptr<ModMail::ShownMessage> message_;
  Actions actions_;
  std::vector<ModMail::MimePart> attachments_;
  std::size_t shown_ = 0;  // which message of the file
  bool isRead_ = false;
  std::unique_ptr<ModMail::PartCopy> copy_;
  bool opensCopy_ = false;
  wxTimer timer_;
};

}  // namespace ui
