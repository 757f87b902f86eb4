#pragma once

// The lines of Web.log: one per request that was refused.

#include <chrono>
#include <string>
#include <string_view>

#include "core/access_line.h"
#include "files/logs.h"
#include "net/connection.h"
#include "settings/program.h"
#include "text/printable_text.h"
#include "web/bare/web_session.h"

namespace ModWeb {

/// The line of the newest request of `session`. A resource longer than any name is cut.
inline std::string WebLogLine(text::WallTime time, std::string_view clientAddress,
                              const WebSession& session) {
  constexpr std::size_t kMostOfResource = 4096;
  return core::AccessLineStart(time, clientAddress) + "请求方法：" + session.CurrentMethod +
         "  请求资源：" + text::Printable(session.CurrentResource, kMostOfResource) + "  Failed!";
}

/// Logs the newest request of `session`, which `client` has sent.
inline void LogRefusal(const settings::Program& program, const net::Connection& client,
                       const WebSession& session) {
  files::AppendLine(program.File("Web.log"),
                    WebLogLine(std::chrono::system_clock::now(), client.RemoteAddress(), session));
}

}  // namespace ModWeb
