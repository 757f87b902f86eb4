#pragma once

// What the FTP page says about everybody's rights: with an upload folder in plain words, without
// one as a warning, beside it the button that makes one. Unless the user has set up protection,
// logging in needs no right and paths with ".." lead out of both folders, so the user must know.

#include <wx/panel.h>

#include <functional>

#include "core/protection_options.h"

class wxButton;
class wxStaticText;

namespace ui {

class UploadNote : public wxPanel {
 public:
  UploadNote(wxWindow* parent, const std::function<void()>& makeUpload);

  /// The upload folder as it is set.
  enum class Uploads { kNone, kInRoot, kElsewhere };
  void ShowUploads(Uploads uploads, const core::ProtectionOptions& protection);

 private:
  wxStaticText* lblUploads_;
  wxStaticText* lblFtpNote_;
  wxButton* cmdMakeUpload_;
};

}  // namespace ui
