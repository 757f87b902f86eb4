#include "ui/dialogs/answer_question.h"

#include <string>

#include "core/start_diagnosis.h"
#include "ui/controls/message_box.h"

namespace ui {

bool MayAnswerForBrowsers(wxWindow* parent, int port) {
  const std::string now =
      port == core::kBrowsersPort
          ? "现在只发送网页内容本身：有些手机可能打不开，视频不能跳着看，断了的下载要从头来。"
          : "现在手机和浏览器打不开您的网页，因为它们只在端口 80 上显示这种网页。";
  return Confirm(parent, now +
                             "\n\n要改为适合今天的浏览器吗？\n"
                             "网页前面会加上浏览器需要的说明（HTTP）：在任何端口都能打开，\n"
                             "视频可以跳着看，下载可以续传，中文名的网页也能找到。\n\n"
                             "马上生效，不用重启服务。想改回来，请在 Web 服务的选项里取消\n“" +
                             core::kForBrowsers + "”。");
}

}  // namespace ui
