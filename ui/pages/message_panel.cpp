#include "ui/pages/message_panel.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <utility>

#include "ui/controls/accessible.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/message_list.h"

namespace ui {
namespace {

constexpr int kPause = 10;         // milliseconds between two turns of reading
const wxSize kLeastList(200, 64);  // the headings and a row

std::string CountText(std::size_t count, bool isCut) {
  if (count == 0) return "没有邮件";
  return isCut ? "只显示 " + std::to_string(count) + " 封" : std::to_string(count) + " 封邮件";
}

}  // namespace

MessagePanel::MessagePanel(wxWindow* parent, Actions actions)
    : wxPanel(parent), actions_(std::move(actions)) {
  lstMessages = Named(new MessageList(this), "lstMessages");
  lstMessages->SetMinSize(FromDIP(kLeastList));
  Describe(*lstMessages, "邮件", AccessibleRole::kTable);
  lstMessages->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { OnActivate(); });
  for (const auto& event : {wxEVT_LIST_ITEM_SELECTED, wxEVT_LIST_ITEM_DESELECTED}) {
    lstMessages->Bind(event, [this](wxListEvent&) { EnableFitting(); });
  }
  lblMailbox = Named(new wxStaticText(this, wxID_ANY, " "), "lblMailbox");
  lblMailbox->SetForegroundColour(QuietText());
  cmdOpenMessage =
      MakeActionButton(this, "cmdOpenMessage", "打开邮件(&R)...", [this] { OnActivate(); });
  cmdRemoveMessage = MakeActionButton(this, "cmdRemoveMessage", "删除邮件(&Z)", [this] {
    if (const auto* selected = lstMessages->Selected()) actions_.remove(*selected);
  });
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(lblMailbox, wxSizerFlags(1).CentreVertical());
  row->Add(cmdOpenMessage, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(cmdRemoveMessage, wxSizerFlags().CentreVertical());
  Column column(this);
  column.Add(lstMessages, 1);
  column.Add(row);
  SetSizerAndFit(new wxBoxSizer(wxVERTICAL));
  GetSizer()->Add(column.Sizer(), wxSizerFlags(1).Expand());
  Fit();
  EnableFitting();
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Work(); });
}

void MessagePanel::ShowMailbox(const std::string& mailRoot, const std::string& user) {
  if (!view_ || mailRoot != mailRoot_ || user != user_) {
    mailRoot_ = mailRoot;
    user_ = user;
    view_.emplace(mailRoot, user);
    lstMessages->ShowMessages({});
    lstMessages->ShowRecipients(user.empty());
  }
  BeginReading();
}

void MessagePanel::LookAnew() {
  if (view_ && !timer_.IsRunning() && view_->HasChanged()) BeginReading();
}

// Most mailboxes are read at once.
void MessagePanel::BeginReading() {
  view_->Begin();
  timer_.Start(kPause);
  Work();
}

void MessagePanel::Work() {
  if (view_->Step()) {
    if (lstMessages->GetItemCount() == 0) lblMailbox->SetLabel(Shown("正在读取……"));
    return;
  }
  timer_.Stop();
  lstMessages->ShowMessages(view_->Messages());
  lblMailbox->SetLabel(Shown(CountText(view_->Messages().size(), view_->IsCut())));
  EnableFitting();
}

void MessagePanel::OnActivate() {
  if (const auto* selected = lstMessages->Selected()) actions_.open(*selected);
}

void MessagePanel::EnableFitting() {
  const bool hasSelected = lstMessages->Selected() != nullptr;
  cmdOpenMessage->Enable(hasSelected);
  cmdRemoveMessage->Enable(hasSelected);
}

}  // namespace ui
