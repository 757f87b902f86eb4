#include "core/service_addresses.h"

#include <string_view>

namespace core {
namespace {

struct Scheme {
  std::string_view name;  // empty: the service has no URL
  int usualPort;
};

constexpr std::array<Scheme, kServices.size()> kSchemes = {{{"http", 80}, {"ftp", 21}, {"", 0}}};

}  // namespace

std::string ReachedAt(ServiceKind service, const std::string& machine, Ports ports) {
  const std::string first = ":" + std::to_string(ports.first);
  if (!IsReachedByUrl(service)) {
    return "SMTP " + machine + first + "  POP3 " + machine + ":" + std::to_string(ports.second);
  }
  const Scheme& scheme = kSchemes[IndexOf(service)];
  const std::string port = ports.first == scheme.usualPort ? "" : first;
  return std::string(scheme.name) + "://" + machine + port + "/";
}

bool IsReachedByUrl(ServiceKind service) { return !kSchemes[IndexOf(service)].name.empty(); }

std::string LocalUrl(ServiceKind kind, const Service& service) {
  if (!IsReachedByUrl(kind)) return {};
  return std::string(kSchemes[IndexOf(kind)].name) + "://" + service.Domain() + ":" +
         std::to_string(CurrentPorts(service).first);
}

Ports CurrentPorts(const Service& service) {
  return service.IsRunning() ? service.PortsInUse() : service.PortsToUse();
}

std::string PortsText(ServiceKind service, Ports ports) {
  const std::string first = std::to_string(ports.first);
  return IsReachedByUrl(service) ? first
                                 : "SMTP " + first + "，POP3 " + std::to_string(ports.second);
}

}  // namespace core
