#include "ui/dialogs/about_box.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include "ui/controls/art.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/copying.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kLogoSize = 80;
constexpr double kNameFactor = 1.8;

wxStaticText* MakeQuiet(wxWindow* parent, const std::string& text) {
  auto* label = new wxStaticText(parent, wxID_ANY, Shown(text));
  label->SetForegroundColour(QuietText());
  return label;
}

}  // namespace

frmAbout::frmAbout(wxWindow* parent) : wxDialog(parent, wxID_ANY, Shown("关于 Tarnwerk")) {
  Named(this, "frmAbout");
  const wxSizerFlags line = wxSizerFlags().Border(wxTOP, FromDIP(kTightGap));
  auto* texts = new wxBoxSizer(wxVERTICAL);
  texts->Add(MakeHeading(this, "Tarnwerk", kNameFactor));
  texts->Add(MakeQuiet(this, "版本 " TARNWERK_VERSION), line);
  texts->AddSpacer(FromDIP(kGap));
  texts->Add(new wxStaticText(this, wxID_ANY,
                              Shown("个人网络服务器管理程序：\n发布主页，共享文件，收发邮件。")),
             line);
  texts->Add(MakeQuiet(this, "以 MIT 许可证发布。"), line);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticBitmap(this, wxID_ANY, Art("tarnwerk", kLogoSize)),
           wxSizerFlags().Border(wxRIGHT, FromDIP(2 * kEdge)));
  row->Add(texts, wxSizerFlags(1));
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(row, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(2 * kEdge)));
  wxButton* ok = MakeButton(this, "cmdOK", "确定", wxID_OK);
  column->Add(ok, wxSizerFlags().Right().Border(wxRIGHT | wxBOTTOM, FromDIP(kEdge)));
  ok->SetDefault();
  ShowAsMain(*ok);
  SetEscapeId(wxID_OK);
  LetCopyTexts(*this);
  SetSizerAndFit(column);
  CentreOnParent();
}

}  // namespace ui
