#pragma once

// Who is connected, and would be cut off if the services stopped now, as a text for the user.

#include <string>
#include <vector>

#include "net/connection_report.h"

namespace core {

/// Like "3 个人正在下载，1 个人已连接"; empty if nobody is connected. People are told apart by
/// their addresses.
std::string WhoIsConnected(const std::vector<net::ConnectionReport>& connections);

}  // namespace core
