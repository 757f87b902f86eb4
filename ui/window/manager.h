#pragma once

// What the window acts on: the program, its three servers and their control.

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

/// The ports that the service is listening on.
core::ListeningPorts PortsOf(const Manager& manager, core::ServiceKind service);

/// The URL that a click on the address opens. Unlike the labels it has the configured port. Empty
/// for the mail server, which no program opens.
std::string UrlOf(const Manager& manager, core::ServiceKind service);

/// Shows the options of a service. True if the user confirmed them.
bool AskForOptions(wxWindow* parent, const Manager& manager, core::ServiceKind service);

}  // namespace ui
