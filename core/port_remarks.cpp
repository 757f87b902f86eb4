#include "core/port_remarks.h"

#include "core/service_addresses.h"
#include "text/conversions.h"

namespace core {
namespace {

bool Differs(int inUse, int toUse) { return toUse != 0 && toUse != inUse; }

}  // namespace

std::optional<std::string> PortComplaint(std::string_view typed, std::optional<int> kept) {
  const auto port = text::ToInt16(typed);
  if (port && *port > 0) return std::nullopt;
  const std::string rule = "应为 " + std::string(kPortRange);
  if (!port && kept) return rule + "，否则仍用端口 " + std::to_string(*kept) + "。";
  if (port && *port == 0) return rule + "；0 由系统任选端口。";
  return rule + "，否则服务无法启动。";
}

std::string RestartNote(ServiceKind kind, const Service& service) {
  if (!service.IsRunning()) return {};
  const Ports inUse = service.PortsInUse();
  const Ports toUse = service.PortsToUse();
  if (!Differs(inUse.first, toUse.first) && !Differs(inUse.second, toUse.second)) return {};
  return "端口已改为 " + PortsText(kind, toUse) + "，重新启动服务后生效。";
}

}  // namespace core
