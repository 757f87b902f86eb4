#include "ui/pages/first_steps.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "settings/user_state.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr const char* kSection = "FirstSteps";
constexpr const char* kDismissed = "Dismissed";

bool Toggle(wxWindow& window, bool shown) {
  if (window.IsShown() == shown) return false;
  window.Show(shown);
  return true;
}

}  // namespace

FirstSteps::FirstSteps(wxWindow* parent, const Actions& actions) : Card(parent) {
  Named(this, "fraFirstSteps");
  putPage_ = MakeActionButton(this, "cmdPutPage", "放一个网页(&1)", actions.putPage);
  addMailUser_ =
      MakeActionButton(this, "cmdFirstMailUser", "添加邮件用户(&2)...", actions.addMailUser);
  allowUploads_ =
      MakeActionButton(this, "cmdAllowUploads", "允许上传(&3)...", actions.allowUploads);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags next = wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(kGap));
  row->Add(MakeHeading(this, "接下来：", 1), next);
  for (wxButton* step : {putPage_, addMailUser_, allowUploads_}) row->Add(step, next);
  parts_ = new wxBoxSizer(wxHORIZONTAL);
  parts_->Add(row);
  parts_->AddStretchSpacer();
  parts_->Add(MakeActionButton(this, "cmdDismissSteps", "不再显示", [this] { Dismiss(); }), next);
  SetSizer(parts_);
}

void FirstSteps::FitInto(int width) {
  parts_->SetOrientation(wxHORIZONTAL);
  if (parts_->CalcMin().x > width) parts_->SetOrientation(wxVERTICAL);
  Layout();
}

bool FirstSteps::ShowSteps(const StepsLeft& left) {
  bool changed = Toggle(*putPage_, left.putPage);
  changed = Toggle(*addMailUser_, left.addMailUser) || changed;
  changed = Toggle(*allowUploads_, left.allowUploads) || changed;
  changed = Toggle(*this, left.Any()) || changed;
  if (changed) Layout();
  return changed;
}

bool FirstSteps::AreWanted() { return settings::Remembered(kSection, kDismissed).value_or(0) == 0; }

void FirstSteps::Dismiss() {
  settings::Remember(kSection, kDismissed, 1);
  ShowSteps({});
  GetParent()->Layout();
}

}  // namespace ui
