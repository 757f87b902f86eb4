#pragma once

// What the window acts on: the program, its three servers, and the control over them.

#include <cstdint>

#include "core/service_addresses.h"
#include "core/service_control.h"
#include "ftp/ftp_server.h"
#include "mail/mail_server.h"
#include "settings/program.h"
#include "web/web_server.h"

class wxWindow;

namespace ui {

struct Manager {
  const settings::Program& program;
  core::ServiceControl& control;
  ModWeb::WebServer& web;
  ModFtp::FtpServer& ftp;
  ModMail::MailServer& mail;
};

/// The ports that the service listens on now.
core::ListeningPorts PortsOf(const Manager& manager, core::ServiceKind service);

/// What a click on the address opens: with the port as set, which the labels do not show. Empty for
/// a mail server, which nothing opens.
std::string UrlOf(const Manager& manager, core::ServiceKind service);

/// Shows the options of the service. True if the user has changed them.
bool AskForOptions(wxWindow* parent, const Manager& manager, core::ServiceKind service);

}  // namespace ui
