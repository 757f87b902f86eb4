#pragma once

// Shows addresses as QR codes to point a telephone at, one at a time.

#include <wx/dialog.h>

#include <string>
#include <vector>

#include "ui/controls/basic_controls.h"

class wxChoice;
class wxStaticText;

namespace ui {

class QrPicture;

class frmQrCode : public wxDialog {
 public:
  /// `addresses`: one at least.
  frmQrCode(wxWindow* parent, const std::vector<std::string>& addresses);

  QrPicture* picQr;
  wxChoice* cboAddress;      // hidden if there is only one
  wxStaticText* lblAddress;  // hidden if there are several

 private:
  void MakeAddress(const std::vector<std::string>& addresses);
};

}  // namespace ui
