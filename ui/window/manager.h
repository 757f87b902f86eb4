#pragma once

// What the window acts on: the program, its three servers and their control.

#include <optional>

#include "core/activity_record.h"
#include "core/service_control.h"
#include "settings/program.h"

class wxWindow;

namespace ModFtp {
class FtpServer;
}
namespace ModMail {
class MailServer;
}
namespace ModWeb {
class WebServer;
}
namespace core {
class Protection;
}
namespace net {
class EventLoop;
}

namespace ui {

struct Manager {
  const settings::Program& program;
  core::ServiceControl& control;
  ModWeb::WebServer& web;
  ModFtp::FtpServer& ftp;
  ModMail::MailServer& mail;
  core::ActivityRecord& record;  // outlives the servers; filled while there is a window
  net::EventLoop& loop;
  core::Protection& protection;
};

/// Shows the options of a service, at the port that is `wrong` if there is one. True if the user
/// confirmed them.
bool AskForOptions(wxWindow* parent, const Manager& manager, core::ServiceKind service,
                   std::optional<int> wrongPort = std::nullopt);

/// Shows the options of the Web server, at how it answers. True likewise.
bool AskForAnswers(wxWindow* parent, const Manager& manager);

}  // namespace ui
