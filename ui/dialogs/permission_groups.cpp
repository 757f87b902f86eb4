#include "ui/dialogs/permission_groups.h"

#include <wx/checkbox.h>
#include <wx/radiobut.h>

#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

wxRadioButton* MakeOption(wxWindow* parent, const char* name, const char* text, long style = 0) {
  return Named(
      new wxRadioButton(parent, wxID_ANY, Shown(text), wxDefaultPosition, wxDefaultSize, style),
      name);
}

}  // namespace

RightsGroup::RightsGroup(wxWindow* parent) {
  Group group(parent, "访问权限");
  chkRead = MakeCheckBox(group.Parent(), "chkRead", "读取(&R)");
  chkWrite = MakeCheckBox(group.Parent(), "chkWrite", "写入(&W)");
  chkContralAll = MakeCheckBox(group.Parent(), "chkContralAll", "完全控制(&A)");
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
