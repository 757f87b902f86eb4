#include "ui/dialogs/replace_question.h"

#include <wx/richmsgdlg.h>

#include "platform/native_path.h"
#include "text/printable_text.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr std::size_t kMostPath = 120;  // bytes

}  // namespace

std::optional<files::Copying::Decision> AskToReplace(wxWindow* parent, const std::string& path) {
  const std::string shown = text::Printable(platform::PathTextForUser(path), kMostPath);
  wxGenericRichMessageDialog box(
      parent, Shown("已有名为“" + shown + "”的文件。\n要用正在复制的文件替换它吗？"),
      Shown(kProgramTitle), wxYES_NO | wxCANCEL | wxNO_DEFAULT | wxICON_QUESTION);
  box.SetYesNoCancelLabels(Shown("替换(&R)"), Shown("跳过(&S)"), Shown("取消(&C)"));
  box.SetEscapeId(wxID_CANCEL);
  box.ShowCheckBox(Shown("对其余的文件也这样做(&A)"));
  const int button = box.ShowModal();
  if (button != wxID_YES && button != wxID_NO) return std::nullopt;
  return files::Copying::Decision{button == wxID_YES, box.IsCheckBoxChecked()};
}

}  // namespace ui
