#include "ui/window/manager.h"

#include <array>
#include <string>

#include "ui/dialogs/ftp_options_dialog.h"
#include "ui/dialogs/mail_options_dialog.h"
#include "ui/dialogs/web_options_dialog.h"

namespace ui {
namespace {

struct ServerAccess {
  core::ListeningPorts (*ports)(const Manager& manager);
  std::string (*url)(const Manager& manager);
  int (*askForOptions)(wxWindow* parent, const Manager& manager);
};

std::string Url(const char* scheme, const core::Service& server, int port) {
  return scheme + server.Domain() + ":" + std::to_string(port);
}

constexpr std::array<ServerAccess, core::kServices.size()> kServers = {{
    {
        [](const Manager& manager) { return core::ListeningPorts{manager.web.ListeningPort()}; },
        [](const Manager& manager) {
          return Url("http://", manager.web, manager.web.Options().WebPort);
        },
        [](wxWindow* parent, const Manager& manager) {
          return frmWebOptions(parent, manager.program, manager.web).ShowModal();
        },
    },
    {
        [](const Manager& manager) { return core::ListeningPorts{manager.ftp.ListeningPort()}; },
        [](const Manager& manager) {
          return Url("ftp://", manager.ftp, manager.ftp.Options().ftpPort);
        },
        [](wxWindow* parent, const Manager& manager) {
          return frmFtpOptions(parent, manager.program, manager.ftp).ShowModal();
        },
    },
    {
        [](const Manager& manager) {
          return core::ListeningPorts{manager.mail.SmtpPort(), manager.mail.Pop3Port()};
        },
        [](const Manager&) { return std::string(); },
        [](wxWindow* parent, const Manager& manager) {
          return frmMailOptions(parent, manager.program, manager.mail).ShowModal();
        },
    },
}};

}  // namespace

core::ListeningPorts PortsOf(const Manager& manager, core::ServiceKind service) {
  return kServers[core::IndexOf(service)].ports(manager);
}

std::string UrlOf(const Manager& manager, core::ServiceKind service) {
  return kServers[core::IndexOf(service)].url(manager);
}

bool AskForOptions(wxWindow* parent, const Manager& manager, core::ServiceKind service) {
  return kServers[core::IndexOf(service)].askForOptions(parent, manager) == wxID_OK;
}

}  // namespace ui
