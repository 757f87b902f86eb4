#pragma once

// What the window acts on: the program, its three servers, and the control over them.

#include "core/service_control.h"
#include "ftp/ftp_server.h"
#include "mail/mail_server.h"
#include "settings/program.h"
#include "web/web_server.h"

namespace ui {

struct Manager {
  const settings::Program& program;
  core::ServiceControl& control;
  ModWeb::WebServer& web;
  ModFtp::FtpServer& ftp;
  ModMail::MailServer& mail;
};

/// Starts and stops by service, through the handlers that every start and stop goes through.
void StartService(const Manager& manager, core::ServiceKind service);
void StopService(const Manager& manager, core::ServiceKind service);

}  // namespace ui
