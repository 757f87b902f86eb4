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
  lists_ = new wxBoxSizer(wxHORIZONTAL);
  lists_->Add(lstMessages, wxSizerFlags(3).Expand());
  bottom_ = new wxBoxSizer(wxHORIZONTAL);
  bottom_->Add(lblMailbox, wxSizerFlags().CentreVertical());
  bottom_->Add(cmdOpenMessage, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  bottom_->Add(cmdRemoveMessage, wxSizerFlags().CentreVertical());
  Column column(this);
  column.Add(lists_, 1);
  column.Add(bottom_);
  SetSizerAndFit(column.Sizer());
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
  lblMailbox->SetLabel(Shown(CountText()));
  lblMailbox->Show(!CountText().empty());
  EnableFitting();
  Layout();
}

// How many a user has is said elsewhere.
std::string MessagePanel::CountText() const {
  const std::size_t count = view_->Messages().size();
  if (view_->IsCut()) return "邮件太多，只显示 " + std::to_string(count) + " 封。";
  if (!view_->IsOfAll()) return "";
  return count == 0 ? "没有邮件。" : "所有用户共有 " + std::to_string(count) + " 封邮件。";
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
