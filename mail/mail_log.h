#pragma once

// The lines of Mail.log: one per QUIT of either protocol, whether or not a message was moved.

#include <string>
#include <string_view>

#include "core/access_line.h"

namespace ModMail {

inline constexpr std::string_view kReceivedMail = "收到邮件(SMTP)";
inline constexpr std::string_view kSentMail = "发送邮件(POP)";

inline std::string MailLogLine(text::WallTime time, std::string_view clientAddress,
                               std::string_view event) {
  return core::AccessLineStart(time, clientAddress) + std::string(event) + "  Success!";
}

}  // namespace ModMail
