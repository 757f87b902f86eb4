#pragma once

// What the FTP page says about everybody's rights: with an upload folder in plain words, without
// one as a warning, beside it the button that makes one. Logging in needs no right, and paths with
// ".." lead out of both folders; this is how the service works, so the user must know.

#include <wx/panel.h>

#include <functional>

class wxButton;
class wxStaticText;

namespace ui {

class UploadNote : public wxPanel {
 public:
  UploadNote(wxWindow* parent, const std::function<void()>& makeUpload);

  /// The upload folder as it is set.
  enum class Uploads { kNone, kInRoot, kElsewhere };
  void ShowUploads(Uploads uploads);

 private:
  wxStaticText* lblUploads_;
  wxButton* cmdMakeUpload_;
};

}  // namespace ui
