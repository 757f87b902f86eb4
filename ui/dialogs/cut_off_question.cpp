#include "ui/dialogs/cut_off_question.h"

#include <wx/richmsgdlg.h>

#include "settings/user_state.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr const char* kSection = "Questions";
constexpr const char* kAsk = "CutOff";

}  // namespace

bool MayCutOff(wxWindow* parent, const std::string& who, const std::string& action) {
  if (who.empty() || settings::Remembered(kSection, kAsk).value_or(1) == 0) return true;
  wxGenericRichMessageDialog box(parent, Shown(who + "。\n现在" + action + "会断开他们。"),
                                 Shown(kProgramTitle), wxYES_NO | wxNO_DEFAULT | wxICON_QUESTION);
  box.SetYesNoLabels(Shown(action + "(&Y)"), Shown("取消(&N)"));
  box.SetEscapeId(wxID_NO);
  box.ShowCheckBox(Shown("不再询问(&D)"));
  if (box.ShowModal() != wxID_YES) return false;
  if (box.IsCheckBoxChecked()) settings::Remember(kSection, kAsk, 0);
  return true;
}

}  // namespace ui
