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

void RightsGroup::Set(const settings::AccessRights& rights) {
  chkRead->SetValue(rights.read);
  chkWrite->SetValue(rights.write);
  chkContralAll->SetValue(rights.controlAll);
}

settings::AccessRights RightsGroup::Rights() const {
  return {chkRead->GetValue(), chkWrite->GetValue(), chkContralAll->GetValue()};
}

ProgramsGroup::ProgramsGroup(wxWindow* parent, const char* nameOfForbidden) {
  Group group(parent, "应用程序许可");
  forbidden = MakeOption(group.Parent(), nameOfForbidden, "不允许执行应用程序(&N)", wxRB_GROUP);
  OptAppDone = MakeOption(group.Parent(), "OptAppDone", "允许执行应用程序(&X)");
  neither_ = MakeOption(group.Parent(), "", "");
  neither_->Hide();
  group.Content().Add(forbidden);
  group.Content().Add(OptAppDone);
  sizer_ = group.Sizer();
}

void ProgramsGroup::Set(bool areForbidden, bool areAllowed) {
  wxRadioButton* on = areAllowed ? OptAppDone : areForbidden ? forbidden : neither_;
  on->SetValue(true);
}

bool ProgramsGroup::AreForbidden() const { return forbidden->GetValue(); }

bool ProgramsGroup::AreAllowed() const { return OptAppDone->GetValue(); }

}  // namespace ui
