#include "ui/pages/first_steps.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>

#include "settings/user_state.h"
#include "ui/controls/art.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kTickSize = 16;

constexpr const char* kSection = "FirstSteps";
constexpr const char* kDismissed = "Dismissed";  // or done
constexpr const char* kGiven = "AddressGiven";

bool Toggle(wxWindow& window, bool shown) {
  if (window.IsShown() == shown) return false;
  window.Show(shown);
  return true;
}

// Without the access key and the dots.
wxString Done(const char* text) {
  const wxString caption = Shown(text);
  return caption.BeforeFirst('(');
}

}  // namespace

FirstSteps::FirstSteps(wxWindow* parent, const Actions& actions) : Card(parent) {
  Named(this, "fraFirstSteps");
  const wxSizerFlags next = wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(kGap));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(MakeHeading(this, "接下来：", 1), next);
  grid_ = new wxFlexGridSizer(static_cast<int>(steps_.size()), FromDIP(kTightGap), FromDIP(kEdge));
  steps_ = {MakeStep("cmdPutPage", "放入网页或文件(&J)", actions.putPage),
            MakeStep("cmdFirstStart", "启动服务(&G)", actions.startAll),
            MakeStep("cmdStepForBrowsers", "让手机也能看网页(&M)...", actions.forBrowsers),
            MakeStep("cmdGiveAddress", "把地址给别人(&C)", actions.giveAddress),
            MakeStep("cmdProtect", "设好保护(&U)...", actions.protect)};
  row->Add(grid_, wxSizerFlags().CentreVertical().Border(wxTOP | wxBOTTOM, FromDIP(kGap)));
  parts_ = new wxBoxSizer(wxHORIZONTAL);
  parts_->Add(row);
  parts_->AddStretchSpacer();
  parts_->Add(MakeActionButton(this, "cmdDismissSteps", "不再显示", [this] { Dismiss(); }), next);
  SetSizer(parts_);
}

FirstSteps::Step FirstSteps::MakeStep(const char* name, const char* text,
                                      const std::function<void()>& action) {
  const Step step = {new wxStaticBitmap(this, wxID_ANY, Art("on", kTickSize)),
                     new wxStaticText(this, wxID_ANY, Done(text)),
                     MakeActionButton(this, name, text, action)};
  step.done->SetForegroundColour(QuietText());
  step.tick->Hide();
  step.done->Hide();
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(step.tick, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kTightGap)));
  row->Add(step.done, wxSizerFlags().CentreVertical());
  row->Add(step.button, wxSizerFlags().CentreVertical());
  grid_->Add(row, wxSizerFlags().CentreVertical());
  return step;
}

// One line, fewer columns, the same above the last button, or one column.
void FirstSteps::FitInto(int width) {
  struct Form {
    wxOrientation parts;
    int columns;
  };
  for (const Form form : {Form{wxHORIZONTAL, 5},
                          {wxHORIZONTAL, 3},
                          {wxHORIZONTAL, 2},
                          {wxVERTICAL, 3},
                          {wxVERTICAL, 2},
                          {wxVERTICAL, 1}}) {
    parts_->SetOrientation(form.parts);
    grid_->SetCols(form.columns);
    grid_->SetRows(0);
    if (parts_->CalcMin().x <= width) break;
  }
  Layout();
}

bool FirstSteps::ShowSteps(const StepStates& states) {
  const std::array<StepState, 5> inOrder = states.InOrder();
  const auto* next = std::find(inOrder.begin(), inOrder.end(), StepState::kNeeded);
  if (next == inOrder.end()) {
    settings::Remember(kSection, kDismissed, 1);
    return ShowAtAll(false);
  }
  bool changed = ShowAtAll(true);
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    changed = ShowStep(steps_[i], inOrder[i] == StepState::kDone, &inOrder[i] == next) || changed;
  }
  if (changed) Layout();
  return changed;
}

bool FirstSteps::ShowStep(Step& step, bool isDone, bool isNext) {
  ShowAsMain(*step.button, isNext);
  if (isDone && step.button->HasFocus()) step.button->Navigate();
  bool changed = Toggle(*step.tick, isDone);
  changed = Toggle(*step.done, isDone) || changed;
  return Toggle(*step.button, !isDone) || changed;
}

bool FirstSteps::ShowAtAll(bool shown) { return Toggle(*this, shown); }

bool FirstSteps::AreWanted() { return settings::Remembered(kSection, kDismissed).value_or(0) == 0; }

bool FirstSteps::WasAddressGiven() {
  return settings::Remembered(kSection, kGiven).value_or(0) != 0;
}

void FirstSteps::RememberAddressGiven() {
  if (!WasAddressGiven()) settings::Remember(kSection, kGiven, 1);
}

void FirstSteps::Dismiss() {
  settings::Remember(kSection, kDismissed, 1);
  ShowAtAll(false);
  GetParent()->Layout();
}

}  // namespace ui
