#include "ui/main_window.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>

#include "core/service_texts.h"

namespace ui {
namespace {

using core::ServiceKind;

constexpr int kGap = 8;

wxString Shown(const std::string& text) { return wxString::FromUTF8(text.c_str()); }

}  // namespace

frmMain::frmMain() : wxFrame(nullptr, wxID_ANY, "Tarnwerk") {
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(MakeFrame(ServiceKind::kWeb, "Web"), wxSizerFlags().Expand().Border(wxALL, kGap));
  column->Add(MakeFrame(ServiceKind::kFtp, "FTP"), wxSizerFlags().Expand().Border(wxALL, kGap));
  column->Add(MakeFrame(ServiceKind::kMail, "E-Mail"), wxSizerFlags().Expand().Border(wxALL, kGap));
  CreateStatusBar(3);
  SetSizerAndFit(column);
  Centre();
  for (const ServiceKind service : {ServiceKind::kWeb, ServiceKind::kFtp, ServiceKind::kMail}) {
    const core::ServiceTexts& texts = core::TextsOf(service);
    ShowButtons(service, false);
    SetHint(service, texts.startHint);
    SetStatusPanel(service, false, texts.statusOff);
  }
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) {
    if (onClose_) onClose_();
  });
}

void frmMain::Attach(core::ServiceControl& control, std::function<void()> onClose) {
  control_ = &control;
  onClose_ = std::move(onClose);
}

wxSizer* frmMain::MakeFrame(ServiceKind service, const wxString& title) {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, title);
  wxWindow* parent = box->GetStaticBox();
  const auto addText = [&] {
    auto* text =
        new wxStaticText(parent, wxID_ANY, "", wxDefaultPosition, FromDIP(wxSize(480, -1)));
    box->Add(text, wxSizerFlags().Expand().Border(wxALL, kGap / 2));
    return text;
  };
  Frame& frame = Of(service);
  frame.result = addText();
  frame.address = addText();
  frame.rootDir = addText();
  frame.hint = addText();
  frame.start = new wxButton(parent, wxID_ANY, Shown("启动"));
  frame.stop = new wxButton(parent, wxID_ANY, Shown("停止"));
  frame.start->Bind(wxEVT_BUTTON, [this, service](wxCommandEvent&) { OnStart(service); });
  frame.stop->Bind(wxEVT_BUTTON, [this, service](wxCommandEvent&) { OnStop(service); });
  box->Add(frame.start, wxSizerFlags().Border(wxALL, kGap / 2));
  box->Add(frame.stop, wxSizerFlags().Border(wxALL, kGap / 2));
  return box;
}

void frmMain::OnStart(ServiceKind service) {
  switch (service) {
    case ServiceKind::kWeb:
      return control_->cmdStartWebService();
    case ServiceKind::kFtp:
      return control_->cmdStartFtpService();
    case ServiceKind::kMail:
      return control_->cmdStartMailService();
  }
}

void frmMain::OnStop(ServiceKind service) {
  switch (service) {
    case ServiceKind::kWeb:
      return control_->cmdStopWebService();
    case ServiceKind::kFtp:
      return control_->cmdStopFtpService();
    case ServiceKind::kMail:
      return control_->cmdStopMailService();
  }
}

void frmMain::SetResult(ServiceKind service, const std::string& text) {
  Of(service).result->SetLabel(Shown(text));
}

void frmMain::SetAddress(ServiceKind service, const std::string& text) {
  Of(service).address->SetLabel(Shown(text));
}

void frmMain::EnableAddress(ServiceKind service, bool enabled) {
  Of(service).address->Enable(enabled);
}

void frmMain::SetHint(ServiceKind service, const std::string& text) {
  Of(service).hint->SetLabel(Shown(text));
}

void frmMain::SetRootDir(ServiceKind service, const std::string& path) {
  Of(service).rootDir->SetLabel(Shown(path));
}

void frmMain::ShowButtons(ServiceKind service, bool running) {
  Of(service).start->Show(!running);
  Of(service).stop->Show(running);
  Layout();
}

void frmMain::SwitchMenuItems(ServiceKind, bool) {}

void frmMain::SetStatusPanel(ServiceKind service, bool, const std::string& text) {
  SetStatusText(Shown(text), static_cast<int>(service));
}

}  // namespace ui
