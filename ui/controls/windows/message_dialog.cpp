#include "ui/controls/message_dialog.h"

namespace ui {
namespace {

// A question that Escape answers with no. The system's box answers Escape only if it has a cancel
// button, so that is what "no" is.
class YesNoDialog : public wxMessageDialog {
 public:
  YesNoDialog(wxWindow* parent, const wxString& text, const wxString& title, long style)
      : wxMessageDialog(parent, text, title,
                        (style & ~(wxYES_NO | wxNO_DEFAULT)) | wxOK | wxCANCEL | wxCANCEL_DEFAULT) {
  }

  bool SetYesNoLabels(const ButtonLabel& yes, const ButtonLabel& no) override {
    return SetOKCancelLabels(yes, no);
  }

  int ShowModal() override {
    const int answer = wxMessageDialog::ShowModal();
    return answer == wxID_OK ? wxID_YES : answer == wxID_CANCEL ? wxID_NO : answer;
  }
};

}  // namespace

std::unique_ptr<wxMessageDialogBase> MakeMessageDialog(wxWindow* parent, const wxString& text,
                                                       const wxString& title, long style) {
  if ((style & wxYES_NO) == wxYES_NO) {
    return std::make_unique<YesNoDialog>(parent, text, title, style);
  }
  return std::make_unique<wxMessageDialog>(parent, text, title, style);
}

}  // namespace ui
