#include "ui/dialogs/attachment_question.h"

#include "mail/attachment_risk.h"
#include "ui/controls/message_box.h"

namespace ui {

bool MayOpenAttachment(wxWindow* parent, const std::string& name) {
  using ModMail::AttachmentRisk;
  switch (ModMail::RiskOf(name)) {
    case AttachmentRisk::kHarmless:
      return true;
    case AttachmentRisk::kExecutes:
      return Confirm(parent, "“" + name +
                                 "”是程序，或者能让电脑执行命令。病毒常常这样寄来，"
                                 "发件人的名字也可能是假的。\n确实要打开吗？");
    default:
      return Confirm(parent, "不知道“" + name +
                                 "”是否安全：打开它的程序可能会执行里面的内容。\n确实要打开吗？");
  }
}

}  // namespace ui
