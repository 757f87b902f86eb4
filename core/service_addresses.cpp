#include "core/service_addresses.h"

namespace core {
namespace {

std::string Suffix(std::uint16_t port, std::uint16_t usual) {
  return port == usual ? "" : ":" + std::to_string(port);
}

}  // namespace

std::string ReachedAt(ServiceKind service, const std::string& machine, ListeningPorts ports) {
  switch (service) {
    case ServiceKind::kWeb:
      return "http://" + machine + Suffix(ports.first, 80) + "/";
    case ServiceKind::kFtp:
      return "ftp://" + machine + Suffix(ports.first, 21) + "/";
    case ServiceKind::kMail:
      return "SMTP " + machine + ":" + std::to_string(ports.first) + "  POP3 " + machine + ":" +
             std::to_string(ports.second);
  }
  return machine;
}

bool IsReachedByUrl(ServiceKind service) { return service != ServiceKind::kMail; }

}  // namespace core
