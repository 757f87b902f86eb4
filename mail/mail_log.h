#pragma once

// The lines of Mail.log: one per QUIT of either protocol, whether or not a message was moved.

#include <string>
#include <string_view>

#include "text/date_time.h"

namespace ModMail {

inline constexpr std::string_view kReceivedMail = "收到邮件(SMTP)";
inline constexpr std::string_view kSentMail = "发送邮件(POP)";

inline std::string MailLogLine(text::WallTime time, std::string_view clientAddress,
                               std::string_view event) {
  std::string line = "时间：" + text::DateTimeText(time);
  line += "  客户机IP：" + std::string(clientAddress);
  line += "  " + std::string(event);
  line += "  Success!";
  return line;
}

}  // namespace ModMail
