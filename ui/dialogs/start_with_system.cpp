#include "ui/dialogs/start_with_system.h"

#include <string>

#include "settings/autostart.h"
#include "ui/controls/message_box.h"

namespace ui {

void SetToStartWithSystem(wxWindow* parent, const settings::Program& program, bool wanted) {
  const std::string version = wanted ? settings::SystemVersionText() : "";
  // A hint only: the value is written all the same.
  if (settings::NeedsRegistrationAsService(version)) {
    Warn(parent, "您使用的操作系统是" + version + "本程序须注册服务后才能使用！");
  }
  // Being refused what is the case already is nothing to tell.
  settings::SetStartsWithSystem(program, wanted);
  if (settings::StartsWithSystem(program) == wanted) return;
  Warn(parent, "“随系统启动”没有改成：系统拒绝了这项设置。\n原因在“出了什么问题”中。");
}

}  // namespace ui
