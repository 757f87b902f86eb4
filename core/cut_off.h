#pragma once

// Who would be cut off if a service stopped now, as a text for the user.

#include <string>
#include <vector>

#include "net/connection_report.h"

namespace core {

/// Like "3 个人正在连接，其中 2 个人的传输还没有完成。"; empty if nobody is connected. People are
/// told apart by their addresses.
std::string CutOffText(const std::vector<net::ConnectionReport>& connections);

}  // namespace core
