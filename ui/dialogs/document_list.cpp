#include "ui/dialogs/document_list.h"

#include <wx/button.h>
#include <wx/listbox.h>

#include <algorithm>

#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/questions.h"

namespace ui {
namespace {

constexpr int kListWidth = 240;
constexpr int kListHeight = 140;

}  // namespace

DocumentList::DocumentList(wxWindow* parent) : wxPanel(parent) {
  lstDocument = Named(
      new wxListBox(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(kListWidth, kListHeight))),
      "lstDocument");
  cmdAddDocument = MakeButton(this, "cmdAddDocument", "添加(&A)...");
  cmdDelDocument = MakeButton(this, "cmdDelDocument", "删除(&D)");
  cmdUpDocument = MakeButton(this, "cmdUpDocument", "上移(&U)");
  cmdDownDocument = MakeButton(this, "cmdDownDocument", "下移(&N)");
  cmdAddDocument->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnAdd(); });
  cmdDelDocument->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnDelete(); });
  cmdUpDocument->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Move(-1); });
  cmdDownDocument->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Move(1); });

  Column buttons(this);
  for (wxButton* button : {cmdAddDocument, cmdDelDocument, cmdUpDocument, cmdDownDocument}) {
    buttons.Add(button);
  }
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(lstDocument, wxSizerFlags(1).Expand());
  row->Add(buttons.Sizer(), wxSizerFlags().Border(wxLEFT, FromDIP(kGap)));
  SetSizer(row);
  Fit();  // the buttons are laid out once before the page has its size
}

void DocumentList::Set(const std::vector<std::string>& names) {
  lstDocument->Clear();
  for (const std::string& name : names) {
    if (!name.empty()) lstDocument->Append(Shown(name));
  }
}

std::vector<std::string> DocumentList::Names() const {
  std::vector<std::string> names;
  for (const wxString& name : lstDocument->GetStrings()) names.push_back(Typed(name));
  return names;
}

void DocumentList::OnAdd() {
  const auto name = AskText(this, "请输入缺省的文件名:", "文件名", "default.htm");
  if (name) lstDocument->Append(Shown(*name));
}

void DocumentList::OnDelete() {
  const int selected = lstDocument->GetSelection();
  if (selected == wxNOT_FOUND) return;
  lstDocument->Delete(static_cast<unsigned>(selected));
  // The next one, so that the keyboard has something to go on with.
  const int last = static_cast<int>(lstDocument->GetCount()) - 1;
  if (last >= 0) lstDocument->SetSelection(std::min(selected, last));
}

void DocumentList::Move(int distance) {
  const int from = lstDocument->GetSelection();
  const int to = from + distance;
  if (from == wxNOT_FOUND || to < 0 || to >= static_cast<int>(lstDocument->GetCount())) return;
  const wxString name = lstDocument->GetString(static_cast<unsigned>(from));
  lstDocument->SetString(static_cast<unsigned>(from),
                         lstDocument->GetString(static_cast<unsigned>(to)));
  lstDocument->SetString(static_cast<unsigned>(to), name);
  lstDocument->SetSelection(to);
}

}  // namespace ui
