#include "ui/service_frame.h"

#include <wx/button.h>
#include <wx/hyperlink.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/statline.h>
#include <wx/stattext.h>

#include <utility>

#include "core/service_texts.h"
#include "ui/art.h"
#include "ui/colours.h"
#include "ui/layout.h"
#include "ui/service_looks.h"
#include "ui/toolkit_text.h"

namespace ui {
namespace {

constexpr int kPictureSize = 48;
constexpr int kStateSize = 20;
constexpr double kTitleFactor = 1.5;
constexpr int kPathWidth = 240;  // at least so much of the root directory is shown

wxSizerFlags InRow(wxWindow* window) {
  return wxSizerFlags().CentreVertical().Border(wxRIGHT, window->FromDIP(kGap));
}

wxStaticText* MakeQuietText(wxWindow* parent, const wxString& text, long style = 0) {
  auto* label = new wxStaticText(parent, wxID_ANY, text, wxDefaultPosition, wxDefaultSize, style);
  label->SetForegroundColour(QuietText());
  return label;
}

}  // namespace

wxStaticText* MakeHeading(wxWindow* parent, const char* text, double factor) {
  auto* heading = new wxStaticText(parent, wxID_ANY, Shown(text));
  heading->SetFont(heading->GetFont().Bold().Scaled(static_cast<float>(factor)));
  return heading;
}

wxHyperlinkCtrl* MakeAddress(wxWindow* parent, const char* name,
                             const std::function<void()>& onClick) {
  auto* address = new wxHyperlinkCtrl(parent, wxID_ANY, " ", "", wxDefaultPosition, wxDefaultSize,
                                      wxHL_ALIGN_LEFT | wxBORDER_NONE);
  // The same colour however often it was opened.
  address->SetVisitedColour(address->GetNormalColour());
  address->Bind(wxEVT_HYPERLINK, [onClick](wxHyperlinkEvent&) { onClick(); });
  address->Hide();
  return Named(address, name);
}

void ShowAddress(wxHyperlinkCtrl& address, const std::string& text) {
  address.SetLabel(Shown(text));
  address.SetCursor(wxCursor(wxCURSOR_HAND));
  address.Show(!text.empty());
}

wxButton* MakeActionButton(wxWindow* parent, const char* name, const char* text,
                           const std::function<void()>& action) {
  wxButton* button = MakeButton(parent, name, text);
  button->Bind(wxEVT_BUTTON, [action](wxCommandEvent&) { action(); });
  return button;
}

ServiceFrame::ServiceFrame(wxWindow* parent, core::ServiceKind service, Actions actions)
    : wxPanel(parent), body_(new wxBoxSizer(wxVERTICAL)) {
  Named(this, LooksOf(service).frame);
  const int edge = FromDIP(kEdge);
  auto* column = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags row = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, edge);
  column->Add(MakeHeader(service), row);
  column->Add(MakeFacts(service, actions), row);
  column->Add(MakeButtons(service, actions), row);
  column->Add(new wxStaticLine(this), row);
  column->Add(body_, wxSizerFlags(1).Expand().Border(wxALL, edge));
  SetSizer(column);
  SetHint(core::TextsOf(service).startHint);
  ShowButtons(false);
}

wxSizer* ServiceFrame::MakeHeader(core::ServiceKind service) {
  const ServiceLooks& looks = LooksOf(service);
  auto* texts = new wxBoxSizer(wxVERTICAL);
  texts->Add(MakeHeading(this, looks.title, kTitleFactor));
  texts->Add(MakeQuietText(this, Shown(looks.purpose)));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticBitmap(this, wxID_ANY, Art(looks.picture, kPictureSize)),
           wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kEdge)));
  row->Add(texts, wxSizerFlags(1).CentreVertical());
  return row;
}

wxSizer* ServiceFrame::MakeFacts(core::ServiceKind service, const Actions& actions) {
  const ServiceLooks& looks = LooksOf(service);
  state_ = new wxStaticBitmap(this, wxID_ANY, Art("off", kStateSize));
  result_ = Named(new wxStaticText(this, wxID_ANY, Shown(looks.idle)), looks.result);
  address_ = MakeAddress(this, looks.address, actions.openAddress);
  auto* outcome = new wxBoxSizer(wxHORIZONTAL);
  outcome->Add(state_, InRow(this));
  outcome->Add(result_, wxSizerFlags().CentreVertical());
  outcome->Add(address_, wxSizerFlags().CentreVertical());

  hint_ = Named(MakeQuietText(this, ""), looks.hint);

  rootDir_ = Named(new wxStaticText(this, wxID_ANY, "", wxDefaultPosition,
                                    FromDIP(wxSize(kPathWidth, -1)), wxST_ELLIPSIZE_MIDDLE),
                   looks.rootDir);
  auto* root = new wxBoxSizer(wxHORIZONTAL);
  root->Add(MakeQuietText(this, Shown("主目录：")), wxSizerFlags().CentreVertical());
  root->Add(rootDir_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  root->Add(MakeActionButton(this, "cmdOpenRoot", "打开文件夹(&F)", actions.openRoot),
            wxSizerFlags().CentreVertical());

  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(outcome);
  column->Add(hint_, wxSizerFlags().Border(wxTOP, FromDIP(kTightGap)));
  column->Add(root, wxSizerFlags().Expand().Border(wxTOP, FromDIP(kGap)));
  return column;
}

wxSizer* ServiceFrame::MakeButtons(core::ServiceKind service, const Actions& actions) {
  const ServiceLooks& looks = LooksOf(service);
  start_ = MakeActionButton(this, looks.start, "启动(&G)", actions.start);
  stop_ = MakeActionButton(this, looks.stop, "停止(&P)", actions.stop);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(start_, InRow(this));
  row->Add(stop_, InRow(this));
  row->Add(MakeActionButton(this, looks.dns, "域名(&D)...", actions.askDomain), InRow(this));
  row->Add(MakeActionButton(this, looks.options, "选项(&O)...", actions.showOptions), InRow(this));
  return row;
}

void ServiceFrame::SetResult(const std::string& text) { result_->SetLabel(Shown(text)); }

void ServiceFrame::SetAddress(const std::string& text) {
  ShowAddress(*address_, text);
  Layout();
}

void ServiceFrame::EnableAddress(bool enabled) { address_->Enable(enabled); }

void ServiceFrame::SetHint(const std::string& text) { hint_->SetLabel(Shown(text)); }

void ServiceFrame::SetRootDir(const std::string& path) {
  rootDir_->SetLabel(Shown(path));
  rootDir_->SetToolTip(Shown(path));
}

void ServiceFrame::ShowButtons(bool running) {
  start_->Show(!running);
  stop_->Show(running);
  Layout();
}

void ServiceFrame::SetState(bool on) { state_->SetBitmap(Art(on ? "on" : "off", kStateSize)); }

bool ServiceFrame::ShowsRunning() const { return stop_->IsShown(); }

wxBoxSizer* ServiceFrame::AddBodyHeading(const char* text) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(MakeHeading(this, text, 1), wxSizerFlags(1).CentreVertical());
  body_->Add(row, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(kGap)));
  return row;
}

wxButton* ServiceFrame::AddBodyButton(wxBoxSizer* heading, const char* name, const char* text,
                                      std::function<void()> action) {
  wxButton* button = MakeActionButton(this, name, text, action);
  heading->Add(button, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kGap)));
  return button;
}

}  // namespace ui
