#include "ui/dialogs/mail_message_dialog.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/listctrl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <array>
#include <chrono>
#include <utility>

#include "core/traffic_text.h"
#include "mail/header_fields.h"
#include "platform/native_path.h"
#include "platform/shell.h"
#include "text/printable_text.h"
#include "ui/controls/accessible.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/list_columns.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/attachment_question.h"
#include "ui/dialogs/questions.h"

namespace ui {
namespace {

using ModMail::MimeMessage;
using ModMail::MimePart;

constexpr int kPause = 5;                      // milliseconds between two turns of work
constexpr std::chrono::milliseconds kTurn(4);  // of work
const wxSize kSize(600, 540);                  // unless the screen is too small for it
const wxSize kLeastText(300, 60);
constexpr int kHeaderLines = 5;
constexpr int kAttachmentsHeight = 96;
constexpr std::size_t kLongestValue = 2000;

constexpr std::array<ListColumn, 2> kColumns = {{{"附件", ""}, {"大小", "888.8 MB"}}};
constexpr int kLeastRest = 160;

std::string DateText(const std::string& date) {
  const auto time = ModMail::MailDate(date);
  return time ? text::DateTimeText(*time) : date;
}

std::string HeaderText(const MimeMessage& message) {
  const std::pair<const char*, std::string> fields[] = {{"主题", message.subject},
                                                        {"发件人", message.from},
                                                        {"收件人", message.to},
                                                        {"抄送", message.copies},
                                                        {"日期", DateText(message.date)}};
  std::string header;
  for (const auto& [label, value] : fields) {
    if (value.empty()) continue;
    header += header.empty() ? "" : "\n";
    header += std::string(label) + "：" + text::Printable(value, kLongestValue);
  }
  return header;
}

// Does work for one turn. False once there is none.
template <class Work>
bool DoForATurn(Work& work) {
  const auto end = std::chrono::steady_clock::now() + kTurn;
  while (work.Step()) {
    if (std::chrono::steady_clock::now() >= end) return true;
  }
  return false;
}

}  // namespace

frmMailMessage::frmMailMessage(wxWindow* parent, std::unique_ptr<ModMail::ShownMessage> message,
                               Actions actions)
    : wxDialog(parent, wxID_ANY, Shown("邮件"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX),
      message_(std::move(message)),
      actions_(std::move(actions)) {
  Named(this, "frmMailMessage");
  MakeControls();
  auto* column = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags next =
      wxSizerFlags().Expand().Border(wxTOP | wxLEFT | wxRIGHT, FromDIP(kEdge));
  column->Add(txtHeader, next);
  column->Add(txtText, wxSizerFlags(next).Proportion(1));
  column->Add(MakeAttachments(), next);
  column->Add(lblNote, wxSizerFlags(next).Border(wxTOP | wxLEFT | wxRIGHT, FromDIP(kGap)));
  column->Add(MakeButtons(), wxSizerFlags().Expand().Border(wxALL, FromDIP(kEdge)));
  SetSizerAndFit(column);
  wxSize size = FromDIP(kSize);
  size.DecTo(wxDisplay(parent).GetClientArea().GetSize());
  size.IncTo(GetSize());
  SetSize(size);
  CentreOnParent();
  EnableFitting();
  ShowNote("正在读取……");
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Work(); });
  timer_.Start(kPause);
}

void frmMailMessage::MakeControls() {
  constexpr long kShown = wxTE_MULTILINE | wxTE_READONLY;
  txtHeader = Named(new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, kShown),
                    "txtHeader");
  const int line = txtHeader->GetTextExtent(Shown("字")).y + FromDIP(kTightGap) / 2;
  txtHeader->SetMinSize({-1, kHeaderLines * line + FromDIP(kGap)});
  Describe(*txtHeader, "邮件头");
  txtText =
      Named(new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition, FromDIP(kLeastText), kShown),
            "txtText");
  Describe(*txtText, "正文");
  lblNote = Named(new wxStaticText(this, wxID_ANY, " "), "lblNote");
  lblNote->SetForegroundColour(QuietText());
}

wxSizer* frmMailMessage::MakeAttachments() {
  lstAttachments = Named(new wxListCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                        wxLC_REPORT | wxLC_SINGLE_SEL | wxBORDER_THEME),
                         "lstAttachments");
  AddColumns(*lstAttachments, kColumns, kLeastRest);
  lstAttachments->SetMinSize({FromDIP(kLeastRest), FromDIP(kAttachmentsHeight)});
  Describe(*lstAttachments, "附件", AccessibleRole::kTable);
  lstAttachments->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { OnOpen(); });
  for (const auto& event : {wxEVT_LIST_ITEM_SELECTED, wxEVT_LIST_ITEM_DESELECTED}) {
    lstAttachments->Bind(event, [this](wxListEvent&) { EnableFitting(); });
  }
  cmdOpenAttachment = MakeActionButton(this, "cmdOpenAttachment", "打开(&O)", [this] { OnOpen(); });
  cmdSaveAttachment =
      MakeActionButton(this, "cmdSaveAttachment", "另存为(&S)...", [this] { OnSave(); });
  Column buttons(this);
  buttons.Add(cmdOpenAttachment);
  buttons.Add(cmdSaveAttachment);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(lstAttachments, wxSizerFlags(1).Expand().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(buttons.Sizer());
  return row;
}

wxSizer* frmMailMessage::MakeButtons() {
  cmdDelMessage = MakeActionButton(this, "cmdDelMessage", "删除邮件(&D)", [this] {
    if (actions_.remove(*this, message_->Count())) EndModal(wxID_OK);
  });
  cmdNextMessage = MakeActionButton(this, "cmdNextMessage", "下一封(&N)", [this] { OnNext(); });
  cmdNextMessage->Hide();
  wxButton* close = MakeButton(this, "cmdClose", "关闭(&C)", wxID_CANCEL);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(cmdDelMessage, wxSizerFlags().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(cmdNextMessage);
  row->AddStretchSpacer();
  row->Add(close);
  SetEscapeId(wxID_CANCEL);
  close->SetDefault();
  ShowAsMain(*close);
  close->SetFocus();
  return row;
}

void frmMailMessage::Work() {
  if (!isRead_) {
    if (DoForATurn(*message_)) return;
    isRead_ = true;
    ShowMessage();
  } else if (copy_) {
    if (DoForATurn(*copy_)) return;
    EndCopy();
  }
  timer_.Stop();
}

void frmMailMessage::ShowMessage() {
  if (!message_->IsScanned()) return ShowNote("这封邮件读不出来。");
  const MimeMessage& message = message_->Message();
  const std::string subject = text::Printable(message.subject, 100);
  SetTitle(Shown(subject.empty() ? "邮件" : subject));
  txtHeader->ChangeValue(Shown(HeaderText(message)));
  txtText->ChangeValue(Shown(message_->Text()));
  cmdNextMessage->Show(message_->Count() > 1);
  ShowAttachments();
  ShowNote(NoteText());
}

void frmMailMessage::ShowAttachments() {
  attachments_ = message_->Attachments();
  lstAttachments->DeleteAllItems();
  for (const MimePart& part : attachments_) {
    const long row = lstAttachments->InsertItem(lstAttachments->GetItemCount(),
                                                Shown(ModMail::FileNameOf(part)));
    lstAttachments->SetItem(row, 1, Shown(core::ByteText(part.size)));
  }
  constexpr long kState = wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED;
  if (!attachments_.empty()) lstAttachments->SetItemState(0, kState, kState);
  for (wxWindow* control :
       {static_cast<wxWindow*>(lstAttachments), static_cast<wxWindow*>(cmdOpenAttachment),
        static_cast<wxWindow*>(cmdSaveAttachment)}) {
    control->Show(!attachments_.empty());
  }
  EnableFitting();
  Layout();
}

std::string frmMailMessage::NoteText() const {
  std::string note;
  if (!message_->IsGood()) note += "后面的部分读不出来。";
  if (message_->IsTextCut()) note += "正文太长，只显示开头。";
  if (message_->Message().isCut) note += "附件太多，只显示前面的。";
  if (message_->Count() > 1) {
    note += "同一个文件里有 " + std::to_string(message_->Count()) + " 封邮件，这是第 " +
            std::to_string(shown_ + 1) + " 封。";
  }
  return note;
}

void frmMailMessage::ShowNote(const std::string& text) {
  lblNote->SetLabel(Shown(text.empty() ? " " : text));
}

void frmMailMessage::EnableFitting() {
  const bool isFree = isRead_ && !copy_;
  cmdOpenAttachment->Enable(isFree && Selected() != nullptr);
  cmdSaveAttachment->Enable(isFree && Selected() != nullptr);
  cmdNextMessage->Enable(isFree);
}

void frmMailMessage::OnNext() {
  shown_ = (shown_ + 1) % message_->Count();
  message_->Choose(shown_);
  isRead_ = false;
  EnableFitting();
  timer_.Start(kPause);
}

const MimePart* frmMailMessage::Selected() const {
  const long row = lstAttachments->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
  return row < 0 ? nullptr : &attachments_.at(static_cast<std::size_t>(row));
}

void frmMailMessage::OnOpen() {
  if (!cmdOpenAttachment->IsEnabled()) return;
  const MimePart part = *Selected();
  const std::string name = ModMail::FileNameOf(part);
  if (!MayOpenAttachment(this, name)) return;
  const std::string path = actions_.placeFor(name);
  if (path.empty()) return Warn(this, "附件未能打开：临时文件夹无法写入。");
  Copy(part, path, true);
}

void frmMailMessage::OnSave() {
  const MimePart part = *Selected();
  const std::string name = ModMail::FileNameOf(part);
  const auto path = AskFileToSave(this, "另存为", kAllFiles, name.c_str());
  if (path) Copy(part, *path, false);
}

void frmMailMessage::Copy(const MimePart& part, const std::string& path, bool opens) {
  lstAttachments->SetFocus();  // or the disabled button would hand it on to 删除邮件
  copy_ = std::make_unique<ModMail::PartCopy>(message_->File(), part, path);
  opensCopy_ = opens;
  ShowNote(opens ? "正在打开……" : "正在保存……");
  EnableFitting();
  timer_.Start(kPause);
}

void frmMailMessage::EndCopy() {
  const std::unique_ptr<ModMail::PartCopy> copy = std::move(copy_);
  EnableFitting();
  ShowNote(NoteText());
  if (!copy->IsDone()) return Warn(this, "附件未能保存：文件无法写入，或者邮件读不出来。");
  const std::string path = platform::PathTextForUser(copy->Path());
  if (opensCopy_) {
    platform::OpenWithShell(path);
  } else {
    ShowNote("已保存：" + path);
  }
}

}  // namespace ui
