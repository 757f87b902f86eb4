#include "ui/dialogs/permission_groups.h"

#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

wxRadioButton* MakeOption(wxWindow* parent, const char* name, const char* text, long style = 0) {
  return Named(
      new wxRadioButton(parent, wxID_ANY, Shown(text), wxDefaultPosition, wxDefaultSize, style),
      name);
}

struct RightsTips {
  const char* read;
  const char* change;
};

constexpr const char* kNoChange =
    "这项选择只会保存下来，没有作用：访问者从来不能更改网站里的文件。";
constexpr const char* kNoRights =
    "这项选择只会保存下来，没有作用：谁都可以下载；上传、改名和删除只限于上传目录。";

RightsTips TipsOf(RightsGroup::Of what) {
  switch (what) {
    case RightsGroup::Of::kWeb:
      return {"不勾选时，访问者打不开任何网页，只会看到“找不到网页”。", kNoChange};
    case RightsGroup::Of::kFtp:
      return {kNoRights, kNoRights};
    case RightsGroup::Of::kVirtualDirectory:
      break;
  }
  return {kVirtualDirectoryTip, kVirtualDirectoryTip};
}

}  // namespace

void ExplainAddress(wxTextCtrl& field) {
  field.SetToolTip(
      Shown("这里填写的地址只会保存下来，没有作用：服务总是在这台电脑的所有地址上运行。"));
}

RightsGroup::RightsGroup(wxWindow* parent, Of what) {
  Group group(parent, "访问权限");
  chkRead = MakeCheckBox(group.Parent(), "chkRead", "读取(&R)");
  chkWrite = MakeCheckBox(group.Parent(), "chkWrite", "写入(&W)");
  chkContralAll = MakeCheckBox(group.Parent(), "chkContralAll", "完全控制(&A)");
  const RightsTips tips = TipsOf(what);
  chkRead->SetToolTip(Shown(tips.read));
  for (wxCheckBox* change : {chkWrite, chkContralAll}) change->SetToolTip(Shown(tips.change));
  group.Content().Add(MakeRow(parent, {chkRead, chkWrite, chkContralAll}));
  sizer_ = group.Sizer();
}

ProgramsGroup::ProgramsGroup(wxWindow* parent, const char* nameOfForbidden) {
  Group group(parent, "应用程序许可");
  forbidden = MakeOption(group.Parent(), nameOfForbidden, "不允许执行应用程序(&N)", wxRB_GROUP);
  OptAppDone = MakeOption(group.Parent(), "OptAppDone", "允许执行应用程序(&X)");
  wxRadioButton* neither = MakeOption(group.Parent(), "", "");
  neither->SetValue(true);
  neither->Hide();
  group.Content().Add(forbidden);
  group.Content().Add(OptAppDone);
  sizer_ = group.Sizer();
}

}  // namespace ui
