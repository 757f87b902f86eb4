#include "ui/dialogs/qr_dialog.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/stattext.h>

#include "ui/controls/accessible.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/copying.h"
#include "ui/controls/layout.h"
#include "ui/controls/qr_picture.h"
#include "ui/controls/toolkit_text.h"

namespace ui {

frmQrCode::frmQrCode(wxWindow* parent, const std::vector<std::string>& addresses)
    : wxDialog(parent, wxID_ANY, Shown("二维码")) {
  Named(this, "frmQrCode");
  MakeAddress(addresses);
  picQr = new QrPicture(this);
  auto* hint = new wxStaticText(this, wxID_ANY, Shown("手机要和这台电脑在同一个网络里。"));
  hint->SetForegroundColour(QuietText());
  wxButton* close = MakeButton(this, "cmdClose", "关闭(&C)", wxID_CANCEL);
  auto* column = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags next = wxSizerFlags().Border(wxTOP | wxLEFT | wxRIGHT, FromDIP(kEdge));
  column->Add(cboAddress, wxSizerFlags(next).Expand());
  for (wxWindow* part : {static_cast<wxWindow*>(lblAddress), static_cast<wxWindow*>(picQr),
                         static_cast<wxWindow*>(hint)}) {
    column->Add(part, wxSizerFlags(next).CentreHorizontal());
  }
  column->Add(close, wxSizerFlags().Right().Border(wxALL, FromDIP(kEdge)));
  picQr->ShowText(addresses.front());
  LetCopyTexts(*this);
  SetSizerAndFit(column);
  SetEscapeId(wxID_CANCEL);
  close->SetDefault();
  ShowAsMain(*close);
  if (cboAddress->IsShown()) {
    cboAddress->SetFocus();
  } else {
    close->SetFocus();
  }
  CentreOnParent();
}

void frmQrCode::MakeAddress(const std::vector<std::string>& addresses) {
  cboAddress = Named(new wxChoice(this, wxID_ANY), "cboAddress");
  for (const std::string& address : addresses) cboAddress->Append(Shown(address));
  Describe(*cboAddress, "地址");
  cboAddress->SetSelection(0);
  cboAddress->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
    picQr->ShowText(Typed(cboAddress->GetStringSelection()));
  });
  lblAddress = Named(new wxStaticText(this, wxID_ANY, Shown(addresses.front())), "lblAddress");
  const bool isOne = addresses.size() == 1;
  cboAddress->Show(!isOne);
  lblAddress->Show(isOne);
}

}  // namespace ui
