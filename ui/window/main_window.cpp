#include "ui/window/main_window.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <utility>

#include "core/service_texts.h"
#include "files/files.h"
#include "settings/user_state.h"
#include "ui/controls/accessible.h"
#include "ui/controls/art.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/selector.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/qr_dialog.h"
#include "ui/pages/folder_tree.h"
#include "ui/pages/live_panel.h"
#include "ui/pages/mail_user_list.h"
#include "ui/pages/service_looks.h"
#include "ui/window/status_bar.h"

namespace ui {
namespace {

using core::ServiceKind;

constexpr int kIconSize = 32;
const wxSize kFirstSize(860, 640);
constexpr const char* kPlace = "Window";  // the section in which the window's place is remembered

}  // namespace

frmMain::frmMain() : MainFrame("Tarnwerk") {
  SetName("frmMain");
  SetIcons(ProgramIcons());
  stbInfo = new StatusBar(this);
  SetStatusBar(stbInfo);
  SetMenuBar(MakeMenuBar(running_));
  MakeContent();
  for (const ServiceKind service : kServices) {
    SetStatusPanel(service, false, core::TextsOf(service).statusOff);
  }
  tray_ = MakeTray(*this, Art("tarnwerk", kIconSize), *this);
  BindMenu();
  BindTabKeys();
  TakeRememberedPlace();
  SelectWelcome();
}

frmMain::~frmMain() = default;

void frmMain::Attach(const Manager& manager, std::function<void()> onClose) {
  manager_ = std::make_unique<Manager>(manager);
  onClose_ = std::move(onClose);
  for (const ServiceKind service : kServices) {
    ShowRootDir(service);
    ShowSettingsFault(service);
  }
  const auto setLog = [&](ServiceKind service, const char* name) {
    FrameOf(service).Live().SetLog(manager.program.File(name), name);
  };
  setLog(ServiceKind::kWeb, "Web.log");
  setLog(ServiceKind::kFtp, "RunErr.Log");  // the FTP server has no log of its own
  setLog(ServiceKind::kMail, "Mail.log");
  ShowFirstSteps();
}

// In a panel: not every system's frame takes Tab from the side bar on to the page.
void frmMain::MakeContent() {
  content_ = new wxPanel(this);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(MakeSideBar(), wxSizerFlags().Expand());
  row->Add(MakePages(), wxSizerFlags(1).Expand());
  content_->SetSizer(row);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(content_, wxSizerFlags(1).Expand());
  SetSizer(whole);
}

wxWindow* frmMain::MakeSideBar() {
  auto* bar = new wxPanel(content_);
  bar->SetBackgroundColour(SideBarColour());
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->AddSpacer(FromDIP(kTightGap));
  const auto add = [&](Selector* selector) {
    column->Add(selector, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(kTightGap)));
    return selector;
  };
  selectors_[0] = add(new Selector(bar, {"fraOverview", "picSelect", "lblOverviewIcon"}, "tarnwerk",
                                   "概览", [this] { SelectWelcome(); }));
  for (const ServiceKind service : kServices) {
    const ServiceLooks& looks = LooksOf(service);
    selectors_[1 + IndexOf(service)] =
        add(new Selector(bar, {looks.selector, looks.selectorPicture, looks.selectorLabel},
                         looks.picture, looks.title, [this, service] { SelectService(service); }));
  }
  bar->SetSizer(column);
  return bar;
}

wxSizer* frmMain::MakePages() {
  fraWelcome = new WelcomeFrame(
      content_, {
                    .start = [this](ServiceKind service) { Start(service); },
                    .stop = [this](ServiceKind service) { Stop(service); },
                    .showPage = [this](ServiceKind service) { SelectService(service); },
                    .openAddress = [this](ServiceKind service) { OpenAddress(service); },
                    .openRoot = [this](ServiceKind service) { OpenRoot(service); },
                    .startAll = [this] { StartAll(); },
                    .stopAll = [this] { StopAll(); },
                    .firstSteps =
                        {
                            .putPage = [this] { PutPage(); },
                            .addMailUser =
                                [this] {
                                  SelectService(ServiceKind::kMail);
                                  AddMailUser();
                                },
                            .allowUploads = [this] { ShowOptions(ServiceKind::kFtp); },
                        },
                });
  for (const ServiceKind service : kServices) {
    frames_[IndexOf(service)] = MakeServiceFrame(service);
  }
  fraWeb = frames_[IndexOf(ServiceKind::kWeb)];
  fraFtp = frames_[IndexOf(ServiceKind::kFtp)];
  fraMail = frames_[IndexOf(ServiceKind::kMail)];
  FillWebFrame();
  FillFtpFrame();
  FillMailFrame();
  auto* pages = new wxBoxSizer(wxVERTICAL);
  for (wxWindow* page : {static_cast<wxWindow*>(fraWelcome), static_cast<wxWindow*>(fraWeb),
                         static_cast<wxWindow*>(fraFtp), static_cast<wxWindow*>(fraMail)}) {
    pages->Add(page, wxSizerFlags(1).Expand());
  }
  return pages;
}

ServiceFrame* frmMain::MakeServiceFrame(ServiceKind service) {
  return new ServiceFrame(
      content_, service,
      {
          .start = [this, service] { Start(service); },
          .stop = [this, service] { Stop(service); },
          .askDomain = [this, service] { AskForDomain(service); },
          .showOptions = [this, service] { ShowOptions(service); },
          .openAddress = [this, service] { OpenAddress(service); },
          .openRoot = [this, service] { OpenRoot(service); },
          .makeRoot = [this, service] { MakeRoot(service); },
          .remedy = [this,
                     service](const core::Diagnosis& diagnosis) { Follow(service, diagnosis); },
          .copy = [this](const std::string& text) { CopyForUser(text); },
          .showQrCode =
              [this](const std::vector<std::string>& addresses) {
                frmQrCode(this, addresses).ShowModal();
              },
      });
}

void frmMain::FillWebFrame() {
  wxBoxSizer* heading = fraWeb->AddBodyHeading("网站内容");
  fraWeb->AddBodyButton(heading, "cmdRefresh", "刷新(&R)", [this] { RefreshTree(); });
  fraWeb->AddBodyButton(heading, "cmdAddVirtualDir", "虚拟目录(&N)...",
                        [this] { AddVirtualDirectory(); });
  tvWebDir = new FolderTree(fraWeb->BodyParent());
  Describe(*tvWebDir, "网站内容", AccessibleRole::kTree);
  fraWeb->Body()->Add(tvWebDir, wxSizerFlags(1).Expand());
}

void frmMain::FillFtpFrame() {
  wxBoxSizer* heading = fraFtp->AddBodyHeading("虚拟目录");
  const std::pair<const char*, const char*> buttons[] = {
      {"cmdAddFtpVirtualDir", "添加(&A)..."},
      {"cmdEditFtpVirtualDir", "编辑(&E)..."},
      {"cmdDelFtpVirtualDir", "删除(&L)"},
  };
  for (const auto& [name, text] : buttons) {
    wxButton* button = fraFtp->AddBodyButton(heading, name, text, [] {});
    button->Disable();
    button->SetToolTip(Shown("FTP 服务只有一个主目录，没有虚拟目录。"));
  }
  auto* note = new wxStaticText(
      fraFtp->BodyParent(), wxID_ANY,
      Shown("FTP 服务只有一个主目录：客户端看到的“/”就是它。\n"
            "任何用户名和密码都可以登录并下载；上传、改名和删除只限于选项中的上传目录。"));
  note->SetForegroundColour(QuietText());
  fraFtp->Body()->Add(note, wxSizerFlags().Expand());
}

void frmMain::FillMailFrame() {
  wxBoxSizer* heading = fraMail->AddBodyHeading("邮件用户");
  fraMail->AddBodyButton(heading, "cmdAddMailUser", "添加(&A)...", [this] { AddMailUser(); });
  fraMail->AddBodyButton(heading, "cmdEditMailUser", "编辑(&E)...", [this] { EditMailUser(); });
  fraMail->AddBodyButton(heading, "cmdDelMailUser", "删除(&L)", [this] { DeleteMailUser(); });
  lvMailUser = new MailUserList(fraMail->BodyParent());
  Describe(*lvMailUser, "邮件用户", AccessibleRole::kTable);
  lvMailUser->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { EditMailUser(); });
  for (const auto& event : {wxEVT_LIST_ITEM_SELECTED, wxEVT_LIST_ITEM_DESELECTED}) {
    lvMailUser->Bind(event, [this](wxListEvent&) { ShowMessagesOfSelected(); });
  }
  fraMail->Body()->Add(lvMailUser, wxSizerFlags(1).Expand());
  lblMessages = Named(new wxStaticText(fraMail->BodyParent(), wxID_ANY, " "), "lblMessages");
  lblMessages->SetForegroundColour(QuietText());
  fraMail->Body()->Add(lblMessages, wxSizerFlags().Expand().Border(wxTOP, FromDIP(kTightGap)));
}

void frmMain::BindMenu() {
  Bind(wxEVT_MENU, &frmMain::OnMenu, this);
  Bind(wxEVT_ICONIZE, &frmMain::OnIconize, this);
  Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
    event.Skip();
    if (event.GetActive()) wentMinimised_ = false;
  });
  Bind(wxEVT_SHOW, [this](wxShowEvent& event) {
    event.Skip();
    if (event.GetEventObject() == this) WatchWhileSeen(event.IsShown() && !IsIconized());
  });
  watch_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Look(); });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) {
    if (onClose_) onClose_();
  });
}

// Wherever the focus is: a tab control turns its tabs by these keys only while it has the focus.
void frmMain::BindTabKeys() {
  const int next = NewControlId();
  const int previous = NewControlId();
  wxAcceleratorEntry keys[] = {{wxACCEL_CTRL, WXK_PAGEDOWN, next},
                               {wxACCEL_CTRL, WXK_PAGEUP, previous}};
  SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(std::size(keys)), keys));
  for (const int id : {next, previous}) {
    Bind(
        wxEVT_MENU,
        [this, isNext = id == next](wxCommandEvent&) {
          for (ServiceFrame* frame : frames_) {
            if (frame->IsShown()) frame->TurnTabs(isNext);
          }
        },
        id);
  }
}

// In the middle of the screen until the user has put it elsewhere; never where no screen is.
void frmMain::TakeRememberedPlace() {
  const wxSize first = FromDIP(kFirstSize);
  SetMinSize(SizeForEveryPage());
  wxSize size(settings::Remembered(kPlace, "Width").value_or(first.x),
              settings::Remembered(kPlace, "Height").value_or(first.y));
  size.IncTo(GetMinSize());
  SetSize(size);
  const auto left = settings::Remembered(kPlace, "Left");
  const auto top = settings::Remembered(kPlace, "Top");
  const wxPoint grip = wxPoint(left.value_or(0) + size.x / 2, top.value_or(0) + kGap);
  if (left && top && wxDisplay::GetFromPoint(grip) != wxNOT_FOUND) {
    Move(*left, *top);
  } else {
    Centre(wxBOTH);
  }
  if (settings::Remembered(kPlace, "Maximized").value_or(0) != 0) Maximize();
}

void frmMain::RememberPlace() const {
  if (!opened_ || IsIconized()) return;
  settings::Remember(kPlace, "Maximized", IsMaximized() ? 1 : 0);
  if (IsMaximized()) return;
  const wxRect place = GetRect();
  settings::Remember(kPlace, "Left", place.x);
  settings::Remember(kPlace, "Top", place.y);
  settings::Remember(kPlace, "Width", place.width);
  settings::Remember(kPlace, "Height", place.height);
}

void frmMain::ShowPage(wxWindow* page) {
  const std::array<wxWindow*, 4> pages = {fraWelcome, fraWeb, fraFtp, fraMail};
  const wxWindow* focused = FindFocus();
  const bool isInSideBar = focused != nullptr && focused->GetParent() == selectors_[0]->GetParent();
  Freeze();
  for (std::size_t i = 0; i < pages.size(); ++i) {
    pages[i]->Show(pages[i] == page);
    selectors_[i]->Select(pages[i] == page);
  }
  // The focus stays where it is, unless that is out of sight now.
  const bool isLost = focused == nullptr || !focused->IsShownOnScreen();
  for (Selector* selector : selectors_) {
    if ((isInSideBar || isLost) && selector->IsSelected()) selector->SetFocus();
  }
  content_->Layout();
  Thaw();
  if (!watch_.IsRunning()) return;
  looks_ = 0;
  Look();
}

// The least size in which nothing of any page is cut off.
wxSize frmMain::SizeForEveryPage() {
  wxSize size;
  for (wxWindow* page : {static_cast<wxWindow*>(fraWelcome), static_cast<wxWindow*>(fraWeb),
                         static_cast<wxWindow*>(fraFtp), static_cast<wxWindow*>(fraMail)}) {
    ShowPage(page);
    content_->InvalidateBestSize();
    size.IncTo(GetSizer()->ComputeFittingWindowSize(this));
  }
  return size;
}

void frmMain::SelectWelcome() { ShowPage(fraWelcome); }

ServiceFrame& frmMain::FrameOf(ServiceKind service) { return *frames_[IndexOf(service)]; }

void frmMain::SetResult(ServiceKind service, const std::string& text) {
  const bool failed = text == core::TextsOf(service).startFailed;
  const auto diagnosis = failed ? Diagnose(service) : std::nullopt;
  failed_[IndexOf(service)] = failed;
  fraWelcome->SetReason(service, diagnosis ? diagnosis->brief : "");
  FrameOf(service).SetResult(text);
  FrameOf(service).SetDiagnosis(diagnosis);
}

void frmMain::SetAddress(ServiceKind service, const std::string& text) {
  FrameOf(service).SetAddress(text);
  fraWelcome->SetAddress(service, text);
}

void frmMain::EnableAddress(ServiceKind service, bool enabled) {
  FrameOf(service).EnableAddress(enabled);
  fraWelcome->EnableAddress(service, enabled);
}

void frmMain::SetHint(ServiceKind service, const std::string& text) {
  FrameOf(service).SetHint(text);
}

void frmMain::SetRootDir(ServiceKind service, const std::string& path) {
  FrameOf(service).SetRootDir(path);
  const std::string root = manager_->control.Of(service).RootDir();
  FrameOf(service).SetRootMissing(!root.empty() && !files::FolderExists(root));
}

void frmMain::ShowButtons(ServiceKind service, bool running) {
  FrameOf(service).ShowButtons(running);
  fraWelcome->SetRunning(service, running);
  ShowReach(service);
  if (failed_[IndexOf(service)]) fraWelcome->SetFailed(service);
}

void frmMain::SwitchMenuItems(ServiceKind service, bool running) {
  running_[IndexOf(service)] = running;
  UpdateMenuBar(*GetMenuBar(), running_);
  tray_->UpdateMenu();
}

void frmMain::SetStatusPanel(ServiceKind service, bool on, const std::string& text) {
  FrameOf(service).SetState(on);
  stbInfo->SetPanel(service, on, text);
}

}  // namespace ui
