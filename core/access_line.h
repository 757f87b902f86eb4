#pragma once

#include <string>
#include <string_view>

#include "text/date_time.h"

namespace core {

/// What a line of Web.log or Mail.log begins with.
inline std::string AccessLineStart(text::WallTime time, std::string_view clientAddress) {
  return "时间：" + text::DateTimeText(time) + "  客户机IP：" + std::string(clientAddress) + "  ";
}

}  // namespace core
