#include "ui/layout.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "ui/toolkit_text.h"

namespace ui {
namespace {

constexpr int kFieldWidth = 280;

wxSizerFlags Below(wxWindow* window, int proportion) {
  return wxSizerFlags(proportion).Expand().Border(wxBOTTOM, window->FromDIP(kGap));
}

}  // namespace

wxButton* MakeButton(wxWindow* parent, const char* name, const char* text, int id) {
  return Named(new wxButton(parent, id, Shown(text)), name);
}

wxCheckBox* MakeCheckBox(wxWindow* parent, const char* name, const char* text) {
  return Named(new wxCheckBox(parent, wxID_ANY, Shown(text)), name);
}

FieldRows::FieldRows(wxWindow* parent)
    : parent_(parent), grid_(new wxFlexGridSizer(3, parent->FromDIP(wxSize(kGap, kGap)))) {
  grid_->AddGrowableCol(1);
}

wxTextCtrl* FieldRows::Add(const char* name, const char* label, long style) {
  wxTextCtrl* field = AddField(name, label, style);
  grid_->AddSpacer(0);
  return field;
}

wxTextCtrl* FieldRows::AddWithButton(const char* name, const char* label, wxButton* button) {
  wxTextCtrl* field = AddField(name, label, 0);
  button->MoveAfterInTabOrder(field);
  grid_->Add(button, wxSizerFlags().CentreVertical());
  return field;
}

wxTextCtrl* FieldRows::AddField(const char* name, const char* label, long style) {
  grid_->Add(new wxStaticText(parent_, wxID_ANY, Shown(label)), wxSizerFlags().CentreVertical());
  auto* field = new wxTextCtrl(parent_, wxID_ANY, "", wxDefaultPosition,
                               parent_->FromDIP(wxSize(kFieldWidth, -1)), style);
  grid_->Add(field, wxSizerFlags(1).Expand().CentreVertical());
  return Named(field, name);
}

wxStaticBoxSizer* MakeGroup(wxWindow* parent, const char* heading) {
  return new wxStaticBoxSizer(wxVERTICAL, parent, Shown(heading));
}

void AddBelow(wxSizer* column, wxWindow* control) {
  column->Add(control, Below(control->GetParent(), 0));
}

void AddBelow(wxSizer* column, wxSizer* part, int proportion) {
  column->Add(part, Below(column->GetContainingWindow(), proportion));
}

void Finish(wxDialog& dialog, wxSizer* content, wxButton* ok, wxButton* cancel) {
  const int edge = dialog.FromDIP(kEdge);
  auto* buttons = new wxStdDialogButtonSizer;
  buttons->SetAffirmativeButton(ok);
  buttons->SetCancelButton(cancel);
  buttons->Realize();
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(content, wxSizerFlags(1).Expand().Border(wxALL, edge));
  column->Add(buttons, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, edge));
  ok->SetDefault();
  dialog.SetEscapeId(wxID_CANCEL);
  dialog.SetSizerAndFit(column);
}

}  // namespace ui
