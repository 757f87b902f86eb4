#include "ui/window/content.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

#include "ui/controls/accessible.h"
#include "ui/controls/colours.h"
#include "ui/controls/copying.h"
#include "ui/controls/layout.h"
#include "ui/controls/selector.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/permission_groups.h"
#include "ui/pages/mail_user_list.h"
#include "ui/pages/message_panel.h"
#include "ui/pages/problems_frame.h"
#include "ui/pages/service_looks.h"
#include "ui/pages/shared_folder.h"
#include "ui/pages/upload_note.h"
#include "ui/window/commands.h"

namespace ui {
namespace {

const wxSize kLeastList(120, 64);  // the headings and a row

}  // namespace

using core::ServiceKind;

Content::Content(wxWindow* parent, Commands& commands) : wxPanel(parent), commands_(commands) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  sideBar_ = MakeSideBar();
  row->Add(sideBar_, wxSizerFlags().Expand());
  row->Add(MakePages(), wxSizerFlags(1).Expand());
  SetSizer(row);
}

wxWindow* Content::MakeSideBar() {
  auto* bar = new wxPanel(this);
  bar->SetBackgroundColour(SideBarColour());
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->AddSpacer(FromDIP(kTightGap));
  const auto add = [&](Selector* selector) {
    column->Add(selector, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(kTightGap)));
    return selector;
  };
  selectors_[0] = add(new Selector(bar, {"fraOverview", "picSelect", "lblOverviewIcon"}, "tarnwerk",
                                   "概览", [this] { commands_.SelectWelcome(); }));
  for (const ServiceKind service : core::kServices) {
    const ServiceLooks& looks = LooksOf(service);
    selectors_[1 + core::IndexOf(service)] = add(new Selector(
        bar, {looks.selector, looks.selectorPicture, looks.selectorLabel}, looks.picture,
        looks.title, [this, service] { commands_.SelectService(service); }));
  }
  Selector* problems =
      add(new Selector(bar, {"fraProblemsEntry", "picProblems", "lblProblemsIcon"}, "problems",
                       kProblemsTitle, [this] { commands_.SelectProblems(); }));
  problems->KeepRoomForCount();
  selectors_.back() = problems;
  bar->SetSizer(column);
  return bar;
}

wxSizer* Content::MakePages() {
  fraWelcome = MakeWelcomeFrame();
  for (const ServiceKind service : core::kServices) {
    frames_[core::IndexOf(service)] = new ServiceFrame(this, service, commands_);
  }
  fraProblems = new ProblemsFrame(this, [this] { commands_.OpenErrorLog(); });
  FillWebFrame();
  FillFtpFrame();
  FillMailFrame();
  auto* pages = new wxBoxSizer(wxVERTICAL);
  for (wxWindow* page : Pages()) {
    pages->Add(page, wxSizerFlags(1).Expand());
    LetCopyTexts(*page);
  }
  return pages;
}

WelcomeFrame* Content::MakeWelcomeFrame() {
  return new WelcomeFrame(
      this,
      {
          .cards =
              {
                  .start = [this](ServiceKind service) { commands_.Start(service); },
                  .stop = [this](ServiceKind service) { commands_.Stop(service); },
                  .showPage = [this](ServiceKind service) { commands_.SelectService(service); },
                  .openAddress = [this](ServiceKind service) { commands_.OpenAddress(service); },
                  .openRoot = [this](ServiceKind service) { commands_.OpenRoot(service); },
                  .follow =
                      [this](ServiceKind service, const core::Diagnosis& diagnosis) {
                        commands_.Follow(service, diagnosis);
                      },
                  .giveAddress =
                      [this](const std::string& address) { commands_.GiveAddress(address); },
                  .showQrCode =
                      [this](const std::vector<std::string>& addresses) {
                        commands_.ShowQrCode(addresses);
                      },
                  .makeUploadFolder = [this] { commands_.MakeUploadFolder(); },
              },
          .startAll = [this] { commands_.StartAll(); },
          .stopAll = [this] { commands_.StopAll(); },
          .showConnected = [this] { commands_.ShowConnected(); },
          .changeProtection = [this] { commands_.ShowProtection(); },
          .firstSteps =
              {
                  .putPage = [this] { commands_.PutPage(); },
                  .startAll = [this] { commands_.StartAll(); },
                  .forBrowsers = [this] { commands_.AnswerForBrowsers(); },
                  .giveAddress = [this] { commands_.GiveFirstAddress(); },
                  .protect = [this] { commands_.ShowProtection(); },
              },
      });
}

void Content::AddFolderButtons(ServiceKind service, wxBoxSizer* heading) {
  ServiceFrame& frame = FrameOf(service);
  frame.AddBodyButton(heading, "cmdRefresh", "刷新(&R)",
                      [this, service] { commands_.Folders().Refresh(service); });
  frame.AddBodyButton(heading, "cmdAddFiles", "添加文件(&I)...",
                      [this, service] { FolderOf(service).AddFiles(); });
}

void Content::FillWebFrame() {
  ServiceFrame& frame = FrameOf(ServiceKind::kWeb);
  wxBoxSizer* heading = frame.AddBodyHeading("网站内容");
  AddFolderButtons(ServiceKind::kWeb, heading);
  frame
      .AddBodyButton(heading, "cmdAddVirtualDir", "虚拟目录(&N)...",
                     [this] { commands_.AddVirtualDirectory(); })
      ->SetToolTip(Shown(kVirtualDirectoryTip));
  webFolder = new SharedFolder(frame.BodyParent(), "tvWebDir", FolderTree::Opens::kFiles,
                               commands_.Folders().Questions());
  Describe(webFolder->Tree(), "网站内容", AccessibleRole::kTree);
  frame.Body()->Add(webFolder, wxSizerFlags(1).Expand());
}

void Content::FillFtpFrame() {
  ServiceFrame& frame = FrameOf(ServiceKind::kFtp);
  wxBoxSizer* heading = frame.AddBodyHeading("共享的文件");
  AddFolderButtons(ServiceKind::kFtp, heading);
  AddFtpVirtualDirectories(heading);
  uploadNote = new UploadNote(frame.BodyParent(), [this] { commands_.MakeUploadFolder(); });
  frame.Body()->Add(uploadNote, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(kGap)));
  ftpFolder = new SharedFolder(frame.BodyParent(), "tvFtpDir", FolderTree::Opens::kFoldersOfFiles,
                               commands_.Folders().Questions());
  Describe(ftpFolder->Tree(), "共享的文件", AccessibleRole::kTree);
  frame.Body()->Add(ftpFolder, wxSizerFlags(1).Expand());
}

void Content::AddFtpVirtualDirectories(wxBoxSizer* heading) {
  ServiceFrame& frame = FrameOf(ServiceKind::kFtp);
  auto* label = new wxStaticText(frame.BodyParent(), wxID_ANY, Shown("虚拟目录："));
  label->SetForegroundColour(QuietText());
  heading->Add(label, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kEdge)));
  const std::pair<const char*, const char*> buttons[] = {
      {"cmdAddFtpVirtualDir", "添加(&A)..."},
      {"cmdEditFtpVirtualDir", "编辑(&E)..."},
      {"cmdDelFtpVirtualDir", "删除(&L)"},
  };
  for (const auto& [name, text] : buttons) {
    wxButton* button = frame.AddBodyButton(heading, name, text, [] {});
    button->Disable();
    button->SetToolTip(Shown("FTP 服务只有一个主目录，没有虚拟目录。"));
  }
}

void Content::FillMailFrame() {
  ServiceFrame& frame = FrameOf(ServiceKind::kMail);
  MailCommands& mail = commands_.Mail();
  wxBoxSizer* heading = frame.AddBodyHeading("用户和邮件");
  heading->Remove(0);  // the users' buttons are above the users
  frame.AddBodyButton(heading, "cmdAddMailUser", "添加用户(&A)...", [&mail] { mail.AddUser(); });
  frame.AddBodyButton(heading, "cmdEditMailUser", "编辑用户(&E)...", [&mail] { mail.EditUser(); });
  frame.AddBodyButton(heading, "cmdDelMailUser", "删除用户(&L)", [&mail] { mail.DeleteUser(); });
  heading->AddStretchSpacer();
  frame.AddBodyButton(heading, "cmdMailSettings", "邮件程序的设置(&N)...",
                      [&mail] { mail.ShowSettings(); });
  heading->GetItem(std::size_t{0})->SetBorder(0);
  messages = new MessagePanel(
      frame.BodyParent(),
      {.open = [&mail](const ModMail::MessageSummary& message) { mail.OpenMessage(message); },
       .remove = [&mail](const ModMail::MessageSummary& message) { mail.RemoveMessage(message); }});
  MakeMailUserList();
  frame.Body()->Add(messages, wxSizerFlags(1).Expand());
}

// Before the messages in the order of Tab, too.
void Content::MakeMailUserList() {
  MailCommands& mail = commands_.Mail();
  lvMailUser = new MailUserList(messages);
  lvMailUser->MoveBeforeInTabOrder(messages->GetChildren().GetFirst()->GetData());
  lvMailUser->SetMinSize(FromDIP(kLeastList));
  Describe(*lvMailUser, "邮件用户", AccessibleRole::kTable);
  lvMailUser->Bind(wxEVT_LIST_ITEM_ACTIVATED, [&mail](wxListEvent&) { mail.EditUser(); });
  for (const auto& event : {wxEVT_LIST_ITEM_SELECTED, wxEVT_LIST_ITEM_DESELECTED}) {
    lvMailUser->Bind(event, [&mail](wxListEvent&) { mail.ShowMessagesOfSelected(); });
  }
  lblMessages = Named(new wxStaticText(messages, wxID_ANY, " ", wxDefaultPosition, wxDefaultSize,
                                       wxST_ELLIPSIZE_END),
                      "lblMessages");
  lblMessages->SetForegroundColour(QuietText());
  messages->Lists()->Insert(0, lvMailUser, wxSizerFlags(1).Expand().Border(wxRIGHT, FromDIP(kGap)));
  messages->Bottom()->Insert(1, lblMessages, wxSizerFlags(1).CentreVertical());
}

std::array<Page*, 5> Content::Pages() const {
  return {fraWelcome, frames_[0], frames_[1], frames_[2], fraProblems};
}

void Content::ShowPage(wxWindow* page) {
  const std::array<Page*, 5> pages = Pages();
  const wxWindow* focused = FindFocus();
  const bool isInSideBar = focused != nullptr && focused->GetParent() == selectors_[0]->GetParent();
  GetParent()->Freeze();
  for (std::size_t i = 0; i < pages.size(); ++i) {
    pages[i]->Show(pages[i] == page);
    selectors_[i]->Select(pages[i] == page);
    if (pages[i] == page && onPage) onPage(i);
  }
  const bool isLost = focused == nullptr || !focused->IsShownOnScreen();
  for (Selector* selector : selectors_) {
    if ((isInSideBar || isLost) && selector->IsSelected()) selector->SetFocus();
  }
  Layout();
  // Tabs that got their final size before their content was there are not laid out by themselves.
  for (ServiceFrame* frame : frames_) {
    if (frame == page) frame->BodyParent()->Layout();
  }
  GetParent()->Thaw();
}

wxSize Content::SizeForEveryPage() const {
  wxSize size;
  for (Page* page : Pages()) size.IncTo(page->WholeSize());
  const wxSize bar = sideBar_->GetBestSize();
  return {bar.x + size.x, std::max(bar.y, size.y)};
}

void Content::ShowUnseenProblems(const std::string& count) { selectors_.back()->ShowCount(count); }

void Content::TurnTabs(bool forward) {
  for (ServiceFrame* frame : frames_) {
    if (frame->IsShown()) frame->TurnTabs(forward);
  }
}

}  // namespace ui
