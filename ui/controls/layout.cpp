#include "ui/controls/layout.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/display.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <utility>

#include "ui/controls/accessible.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kFieldWidth = 280;

// Systems leave different room behind the last button; the edge is in line with the content.
void AlignWithEdge(wxDialog& dialog, wxStdDialogButtonSizer& row, const DialogButtons& buttons) {
  const int right =
      std::max(buttons.ok->GetRect().GetRight(), buttons.cancel->GetRect().GetRight());
  const int missing = dialog.FromDIP(kEdge) - (dialog.GetClientSize().x - 1 - right);
  if (missing > 0) row.AddSpacer(missing);
  dialog.GetSizer()->SetSizeHints(&dialog);
}

template <class Content>
void FillWith(wxDialog& dialog, Content* content, const DialogButtons& buttons) {
  const int edge = dialog.FromDIP(kEdge);
  // Button order as in the system's own dialogs.
  auto* row = new wxStdDialogButtonSizer;
  row->SetAffirmativeButton(buttons.ok);
  row->SetCancelButton(buttons.cancel);
  row->Realize();
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(content, wxSizerFlags(1).Expand().Border(wxALL, edge));
  column->Add(row, wxSizerFlags().Expand().Border(wxBOTTOM, edge));
  dialog.SetSizerAndFit(column);
  AlignWithEdge(dialog, *row, buttons);
  DescribeFields(dialog);
  // On a screen that is too small, all but the buttons scrolls.
  dialog.SetLayoutAdaptationMode(wxDIALOG_ADAPTATION_MODE_ENABLED);
}

}  // namespace

wxButton* MakeButton(wxWindow* parent, const char* name, const char* text, int id) {
  return Named(new wxButton(parent, id, Shown(text)), name);
}

wxCheckBox* MakeCheckBox(wxWindow* parent, const char* name, const char* text) {
  return Named(new wxCheckBox(parent, wxID_ANY, Shown(text)), name);
}

wxTextCtrl* MakeField(wxWindow* parent, const char* name, int width, long style) {
  auto* field = Named(new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition,
                                     parent->FromDIP(wxSize(width, -1)), style),
                      name);
  FitToLetters(*field);
  return field;
}

// On GTK the toolkit's best height shrinks as the letters grow.
void FitToLetters(wxTextCtrl& field) {
  const int height = field.GetTextExtent(Shown("字")).y + field.FromDIP(2 * kTightGap);
  field.SetMinSize({field.GetMinSize().x, std::max(height, field.GetBestSize().y)});
}

Column::Column(wxWindow* window, int gap)
    : sizer_(new wxBoxSizer(wxVERTICAL)), gap_(window->FromDIP(gap)) {}

void Column::Add(wxWindow* part, int proportion) { sizer_->Add(part, Next(proportion)); }

void Column::Add(wxSizer* part, int proportion) { sizer_->Add(part, Next(proportion)); }

wxSizerFlags Column::Next(int proportion) {
  return wxSizerFlags(proportion).Expand().Border(wxTOP, sizer_->IsEmpty() ? 0 : gap_);
}

Group::Group(wxWindow* parent, const char* heading)
    : box_(new wxStaticBoxSizer(wxVERTICAL, parent, Shown(heading))), content_(parent) {
  box_->Add(content_.Sizer(), wxSizerFlags(1).Expand().Border(wxALL, parent->FromDIP(kGap)));
}

wxWindow* Group::Parent() const { return box_->GetStaticBox(); }

FieldRows::FieldRows(wxWindow* parent)
    : parent_(parent), grid_(new wxGridBagSizer(parent->FromDIP(kGap), parent->FromDIP(kGap))) {}

wxTextCtrl* FieldRows::Add(const char* name, const char* label, long style) {
  return AddField(name, label, style, 2);
}

wxTextCtrl* FieldRows::AddWithButton(const char* name, const char* label, const char* buttonName,
                                     const char* buttonText, wxButton*& button) {
  wxTextCtrl* field = AddField(name, label, 0, 1);
  button = MakeButton(parent_, buttonName, buttonText);
  grid_->Add(button, {row_, 2}, {1, 1}, wxEXPAND);
  return field;
}

// The label comes first: its mnemonic moves the focus to the control created next.
wxTextCtrl* FieldRows::AddField(const char* name, const char* label, long style, int columns) {
  ++row_;
  auto* text = new wxStaticText(parent_, wxID_ANY, Shown(label));
  wxTextCtrl* field = MakeField(parent_, name, kFieldWidth, style);
  grid_->Add(text, {row_, 0}, {1, 1}, wxALIGN_CENTRE_VERTICAL);
  grid_->Add(field, {row_, 1}, {1, columns}, wxEXPAND | wxALIGN_CENTRE_VERTICAL);
  if (row_ == 0) grid_->AddGrowableCol(1);
  last_ = field;
  return field;
}

void FieldRows::AddNote(const char* name, const char* usual, FieldComplaint complaint) {
  AddNote(
      name, [usual](const std::string&) { return usual; }, std::move(complaint));
}

void FieldRows::AddNote(const char* name, FieldRemark usual, FieldComplaint complaint) {
  ++row_;
  auto* note = Named(new wxStaticText(parent_, wxID_ANY, Shown(usual(""))), name);
  note->SetForegroundColour(QuietText());
  grid_->Add(note, {row_, 1}, {1, 2}, wxALIGN_CENTRE_VERTICAL);
  last_->Bind(wxEVT_TEXT, [note, usual = std::move(usual),
                           complaint = std::move(complaint)](wxCommandEvent& event) {
    event.Skip();
    const std::string typed = Typed(event.GetString());
    const std::optional<std::string> wrong = complaint(typed);
    const wxString text = Shown(wrong ? *wrong : usual(typed));
    if (note->GetLabelText() == text) return;
    note->SetForegroundColour(wrong ? FailedText() : QuietText());
    note->SetLabelText(text);
    GrowToFit(*note);
  });
}

void FieldRows::AddAcross(wxSizer* part) { grid_->Add(part, {++row_, 0}, {1, 3}, wxEXPAND); }

wxStaticText* Explain(wxWindow& control, const char* text) {
  auto* sentence = new wxStaticText(control.GetParent(), wxID_ANY, Shown(text));
  sentence->SetForegroundColour(QuietText());
  Describe(control, Typed(wxControl::RemoveMnemonics(control.GetLabel())), AccessibleRole::kItsOwn,
           text);
  return sentence;
}

ExplainedBox MakeExplainedBox(wxWindow* parent, const char* name, const char* text,
                              const char* explanation, int indent) {
  wxCheckBox* box = MakeCheckBox(parent, name, text);
  auto* lines = new wxBoxSizer(wxVERTICAL);
  lines->Add(box, wxSizerFlags().Border(wxLEFT, parent->FromDIP(indent)));
  lines->Add(Explain(*box, explanation),
             wxSizerFlags().Border(wxLEFT, parent->FromDIP(indent + kIndent)));
  return {box, lines};
}

wxSizer* MakeRow(wxWindow* window, std::initializer_list<wxWindow*> controls) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  for (wxWindow* control : controls) {
    const int gap = row->IsEmpty() ? 0 : window->FromDIP(kEdge);
    row->Add(control, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  }
  return row;
}

void ShowInstead(wxWindow& of, wxWindow& shown) {
  const bool hadFocus = of.HasFocus();
  shown.Show();
  if (hadFocus) shown.SetFocus();
  of.Hide();
}

void GrowToFit(wxWindow& control) {
  control.GetParent()->Layout();
  wxWindow& window = *wxGetTopLevelParent(&control);
  if (window.GetSizer() == nullptr) return;  // still being made
  wxSize size = window.GetSize();
  size.IncTo(window.GetSizer()->ComputeFittingWindowSize(&window));
  size.DecTo(wxDisplay(&window).GetClientArea().GetSize());
  if (size != window.GetSize()) window.SetSize(size);
  window.Layout();
}

wxWindow* WithMargin(wxWindow* page, wxSizer* content) {
  auto* frame = new wxBoxSizer(wxVERTICAL);
  frame->Add(content, wxSizerFlags(1).Expand().Border(wxALL, page->FromDIP(kEdge)));
  page->SetSizer(frame);
  return page;
}

wxWindow* WithMargin(wxWindow* page, wxWindow* content) {
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(content, wxSizerFlags(1).Expand());
  return WithMargin(page, column);
}

DialogButtons MakeDialogButtons(wxDialog& dialog, const char* okName, const char* cancelName) {
  const DialogButtons buttons{MakeButton(&dialog, okName, "确定", wxID_OK),
                              MakeButton(&dialog, cancelName, "取消", wxID_CANCEL)};
  buttons.ok->SetDefault();
  ShowAsMain(*buttons.ok);
  dialog.SetEscapeId(wxID_CANCEL);
  return buttons;
}

void Fill(wxDialog& dialog, wxSizer* content, const DialogButtons& buttons) {
  FillWith(dialog, content, buttons);
}

void Fill(wxDialog& dialog, wxWindow* content, const DialogButtons& buttons) {
  FillWith(dialog, content, buttons);
}

}  // namespace ui
