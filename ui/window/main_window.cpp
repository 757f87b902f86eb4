#include "ui/window/main_window.h"

#include <wx/menu.h>
#include <wx/sizer.h>

#include <algorithm>
#include <utility>

#include "core/service_texts.h"
#include "settings/user_state.h"
#include "ui/controls/art.h"
#include "ui/controls/layout.h"
#include "ui/window/failure.h"
#include "ui/window/status_bar.h"

namespace ui {

using core::ServiceKind;

namespace {

ServiceState StateAfter(core::Outcome::Event event) {
  switch (event) {
    case core::Outcome::Event::kStarted:
      return ServiceState::kOn;
    case core::Outcome::Event::kStartFailed:
      return ServiceState::kFailed;
    default:
      return ServiceState::kOff;
  }
}

}  // namespace

frmMain::frmMain()
    : MainFrame("Tarnwerk"),
      stbInfo(new StatusBar(this)),
      dialogs_([this] { mode_.UpdateMenu(); }),
      commands_(*this, *stbInfo, running_),
      survey_(*stbInfo),
      place_(*this),
      mode_(
          *this, place_, dialogs_, [this] { return MakeMenuForTray(); },
          [this](bool seen) { survey_.WatchWhileSeen(seen); }) {
  SetName("frmMain");
  SetIcons(ProgramIcons());
  SetStatusBar(stbInfo);
  SetMenuBar(MakeMenuBar(running_));
  content = new Content(this, commands_);
  content->onPage = [this](std::size_t page) { MarkPage(*GetMenuBar(), page); };
  fraWelcome = content->fraWelcome;
  fraWeb = &content->FrameOf(ServiceKind::kWeb);
  fraFtp = &content->FrameOf(ServiceKind::kFtp);
  fraMail = &content->FrameOf(ServiceKind::kMail);
  survey_.ShowOn(*content);
  commands_.ActOn(*content, survey_);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(content, wxSizerFlags(1).Expand());
  SetSizer(whole);
  for (const ServiceKind service : core::kServices) {
    UpdateStatus(service, ServiceState::kOff, core::TextsOf(service).statusOff);
  }
  Bind(wxEVT_MENU, &frmMain::OnMenu, this);
  Bind(wxEVT_MENU_OPEN, [this](wxMenuEvent& event) {
    event.Skip();
    MarkStartWithSystem();
  });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) {
    if (onClose_ && (!IsClosedByUser() || commands_.MayEnd())) onClose_();
  });
  BindTabKeys();
  SetMinSize(ClientToWindowSize(content->SizeForEveryPage()));
  place_.Take();
  commands_.SelectWelcome();
}

frmMain::~frmMain() = default;

void frmMain::Attach(const Manager& manager, std::function<void()> onClose) {
  manager_ = std::make_unique<Manager>(manager);
  onClose_ = std::move(onClose);
  for (const ServiceKind service : core::kServices) {
    manager_->control.Of(service).Observe(&manager_->record.Of(service));
  }
  survey_.Attach(*manager_);
  survey_.OnNews([this](const std::string& news) {
    if (settings::WantsNotices()) mode_.Tell("Tarnwerk", news);
  });
  survey_.OnConnected([this](bool connected) { ShowTrayState(connected); });
  mode_.Attach(manager_->program, onClose_);
  commands_.Attach(*manager_);
  MarkStartWithSystem();
}

// The fact, which the menu is not alone to change.
void frmMain::MarkStartWithSystem() {
  if (manager_) GetMenuBar()->Check(mnuStartWithSystem, commands_.StartsWithSystem());
}

// A tab control handles these keys only while it has the focus; here they work anywhere in the
// window.
void frmMain::BindTabKeys() {
  const int next = NewControlId();
  const int previous = NewControlId();
  wxAcceleratorEntry keys[] = {{wxACCEL_CTRL, WXK_PAGEDOWN, next},
                               {wxACCEL_CTRL, WXK_PAGEUP, previous}};
  SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(std::size(keys)), keys));
  Bind(
      wxEVT_MENU, [this](wxCommandEvent&) { content->TurnTabs(true); }, next);
  Bind(
      wxEVT_MENU, [this](wxCommandEvent&) { content->TurnTabs(false); }, previous);
}

void frmMain::ShowOutcome(const core::Outcome& outcome) {
  ShowInFrame(outcome);
  running_[core::IndexOf(outcome.service)] = outcome.CanBeStopped();
  UpdateMenuBar(*GetMenuBar(), running_);
  failed_[core::IndexOf(outcome.service)] = StateAfter(outcome.event) == ServiceState::kFailed;
  mode_.UpdateMenu();
  ShowTrayState(connected_);
  UpdateStatus(outcome.service, StateAfter(outcome.event), core::StatusText(outcome));
}

void frmMain::ShowInFrame(const core::Outcome& outcome) {
  const auto diagnosis = Diagnose(outcome, *manager_);
  content->FrameOf(outcome.frame).ShowOutcome(outcome, diagnosis);
  fraWelcome->ShowOutcome(outcome, diagnosis);
  if (outcome.rootDir) commands_.ShowRootDir(outcome.frame);
  survey_.Reach().EndTest(outcome.frame);
  survey_.Reach().Show(outcome.frame);
  survey_.Reach().ShowDomainRemark(outcome.frame);
  survey_.ShowFirstSteps();
}

void frmMain::UpdateStatus(ServiceKind service, ServiceState state, const std::string& text) {
  content->FrameOf(service).SetState(state);
  const char* onOrOff = state == ServiceState::kOn ? "ON" : "OFF";
  stbInfo->UpdateServiceStatus(onOrOff, text, core::TextsOf(service).name);
  if (state == ServiceState::kFailed) stbInfo->MarkFailed(service);
}

void frmMain::ShowTrayState(bool connected) {
  const auto any = [](const ServiceStates& states) {
    return std::any_of(states.begin(), states.end(), [](bool state) { return state; });
  };
  connected_ = connected;
  TrayState state = any(running_) ? TrayState::kRunning : TrayState::kOff;
  if (connected) state = TrayState::kConnected;
  if (any(failed_)) state = TrayState::kFailed;
  mode_.SetState(state);
}

void frmMain::CloseEverything(std::function<void()> done) {
  if (!mode_.End()) return;
  survey_.End();
  dialogs_.DismissAll(std::move(done));
}

std::unique_ptr<wxMenu> frmMain::MakeMenuForTray() {
  auto menu = MakeTrayMenu(running_);
  // One dialog at a time: an open one is brought to the front by showing the window.
  for (const MenuItem item : {mnuOptions, mnuHelpTopic, mnuAbout}) {
    menu->Enable(item, dialogs_.Innermost() == nullptr);
  }
  // Not at once: the desktop's menu serves nothing else until an entry has returned, and some open
  // a dialog.
  menu->Bind(wxEVT_MENU, [this](wxCommandEvent& event) {
    CallAfter([this, event]() mutable { OnMenu(event); });
  });
  return menu;
}

void frmMain::View(ServiceKind service) {
  commands_.SelectService(service);
  Open();
}

void frmMain::OnMenu(wxCommandEvent& event) {
  switch (event.GetId()) {
    case mnuStartWeb:
      return commands_.Start(ServiceKind::kWeb);
    case mnuStopWeb:
      return commands_.Stop(ServiceKind::kWeb);
    case mnuStartFtp:
      return commands_.Start(ServiceKind::kFtp);
    case mnuStopFtp:
      return commands_.Stop(ServiceKind::kFtp);
    case mnuStartMail:
      return commands_.Start(ServiceKind::kMail);
    case mnuStopMail:
      return commands_.Stop(ServiceKind::kMail);
    case mnuStartAll:
      return commands_.StartAll();
    case mnuStopAll:
      return commands_.StopAll();
    case mnuViewWelcome:
      commands_.SelectWelcome();
      return Open();
    case mnuViewWeb:
      return View(ServiceKind::kWeb);
    case mnuViewFtp:
      return View(ServiceKind::kFtp);
    case mnuViewEmail:
      return View(ServiceKind::kMail);
    case mnuViewProblems:
      commands_.SelectProblems();
      return Open();
    case mnuShowFrmMain:
      return Open();
    case mnuShowSystemTray:
      return GoToTray();
    case mnuOptions:
      // The options can remove the password, so from the tray it is required first.
      if (mode_.MayUse()) commands_.ShowGeneralOptions();
      return;
    case mnuStartWithSystem:
      commands_.ToggleStartWithSystem();
      return MarkStartWithSystem();
    case mnuProtection:
      return commands_.ShowProtection();
    case mnuHelpTopic:
      return commands_.ShowHelp();
    case mnuTips:
      return commands_.ShowTips();
    case mnuAbout:
      return commands_.ShowAbout();
    case mnuExit:
      if (commands_.MayEnd()) onClose_();
      return;
    default:
      event.Skip();
  }
}

}  // namespace ui
