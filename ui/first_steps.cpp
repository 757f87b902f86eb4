#include "ui/first_steps.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "core/files.h"
#include "mail/mail_accounts.h"
#include "ui/layout.h"
#include "ui/service_frame.h"
#include "ui/toolkit_text.h"
#include "ui/user_state.h"

namespace ui {
namespace {

constexpr const char* kSection = "FirstSteps";
constexpr const char* kDismissed = "Dismissed";
constexpr std::size_t kEntriesLookedAt = 64;  // so many folders and no file: somebody knows his way

bool HoldsEntry(const std::string& folder, bool isFolder) {
  if (folder.empty()) return false;
  std::error_code error;
  platform::DirectoryReader reader = core::ReadFolder(folder, error);
  std::vector<platform::DirectoryEntry> entries;
  if (!error) reader.Read(kEntriesLookedAt, entries, error);
  return entries.size() == kEntriesLookedAt ||
         std::any_of(entries.begin(), entries.end(), [isFolder](const auto& entry) {
           return entry.isFolder == isFolder && !entry.isHidden;
         });
}

bool Toggle(wxWindow& window, bool shown) {
  if (window.IsShown() == shown) return false;
  window.Show(shown);
  return true;
}

}  // namespace

StepsLeft LookForSteps(const Manager& manager) {
  return {
      .putPage = !HoldsEntry(manager.web.RootDir(), false),
      .addMailUser = !HoldsEntry(ModMail::MailUserFolder(manager.mail.RootDir()), true),
      .allowUploads = manager.ftp.Options().uploadDir.empty(),
  };
}

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
  row->AddStretchSpacer();
  row->Add(MakeActionButton(this, "cmdDismissSteps", "不再显示", [this] { Dismiss(); }), next);
  SetSizer(row);
}

bool FirstSteps::ShowSteps(const StepsLeft& left) {
  bool changed = Toggle(*putPage_, left.putPage);
  changed = Toggle(*addMailUser_, left.addMailUser) || changed;
  changed = Toggle(*allowUploads_, left.allowUploads) || changed;
  changed = Toggle(*this, left.Any()) || changed;
  if (changed) Layout();
  return changed;
}

bool FirstSteps::AreWanted() { return Remembered(kSection, kDismissed).value_or(0) == 0; }

void FirstSteps::Dismiss() {
  Remember(kSection, kDismissed, 1);
  ShowSteps({});
  GetParent()->Layout();
}

}  // namespace ui
