#pragma once

#include <string>
#include <string_view>

#include "text/date_time.h"

namespace core {

/// The beginning of each line in Web.log and Mail.log.
inline std::string AccessLineStart(text::WallTime time, std::string_view clientAddress) {
  return "时间：" + text::DateTimeText(time) + "  客户机IP：" + std::string(clientAddress) + "  ";
}

}  // namespace core
