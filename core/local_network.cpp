#include "core/local_network.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <tuple>

#include "core/hosts_file.h"
#include "platform/text_case.h"

namespace core {
namespace {

using platform::LocalAddress;

// How the names of interfaces begin (Linux), in upper case.
constexpr std::array<std::string_view, 9> kTunnels = {"TUN", "TAP", "WG",    "PPP", "TAILSCALE",
                                                      "ZT",  "GRE", "IPSEC", "UTUN"};
constexpr std::array<std::string_view, 12> kVirtual = {"DOCKER",  "BR-",    "VETH",    "VIRBR",
                                                       "VBOXNET", "VMNET",  "LXC",     "LXD",
                                                       "CNI",     "PODMAN", "FLANNEL", "VNET"};

// What descriptions of adapters contain (Windows).
constexpr std::array<std::string_view, 6> kTunnelWords = {"TAP-",   "WIREGUARD", "OPENVPN",
                                                          "WINTUN", "VPN",       "TUNNEL"};
constexpr std::array<std::string_view, 5> kVirtualWords = {"VETHERNET", "HYPER-V", "VIRTUALBOX",
                                                           "VMWARE", "VIRTUAL"};

bool IsOne(std::string_view upper, const auto& beginnings, const auto& words) {
  const auto begins = [upper](std::string_view each) { return upper.starts_with(each); };
  const auto contains = [upper](std::string_view each) { return upper.find(each) != upper.npos; };
  return std::any_of(beginnings.begin(), beginnings.end(), begins) ||
         std::any_of(words.begin(), words.end(), contains);
}

// 10.*, 172.16.* to 172.31.*, 192.168.*
bool IsPrivate(std::string_view address) {
  if (address.starts_with("10.") || address.starts_with("192.168.")) return true;
  if (!address.starts_with("172.")) return false;
  int second = 0;
  std::from_chars(address.data() + 4, address.data() + address.size(), second);
  return second >= 16 && second <= 31;
}

// The lower, the likelier. A bridge to the network has a virtual machine's name, but leads out. A
// tunnel may lead out, too, but not to the neighbours.
auto RankOf(const LocalAddress& each) {
  const std::string upper = platform::UpperCase(each.interface);
  const bool isTunnel = IsOne(upper, kTunnels, kTunnelWords);
  return std::tuple(isTunnel, !each.leadsOut, IsOne(upper, kVirtual, kVirtualWords),
                    !IsPrivate(each.address));
}

bool IsAddress(std::string_view name) {
  return name.find_first_not_of("0123456789.") == std::string_view::npos;
}

bool IsLoopback(std::string_view address) { return address.starts_with("127."); }

}  // namespace

std::vector<std::string> LikelyFirst(std::vector<LocalAddress> addresses) {
  std::stable_sort(addresses.begin(), addresses.end(),
                   [](const auto& a, const auto& b) { return RankOf(a) < RankOf(b); });
  std::vector<std::string> texts;
  texts.reserve(addresses.size());
  for (const LocalAddress& each : addresses) texts.push_back(each.address);
  return texts;
}

bool IsThisMachine(std::string_view address, const std::vector<std::string>& own) {
  return IsLoopback(address) || std::find(own.begin(), own.end(), address) != own.end();
}

// Every service enters its domain in the hosts file, also one that others know from elsewhere.
std::string DomainRemark(const std::string& domain, std::string_view hostsFile) {
  if (domain.empty()) return {};
  if (platform::EqualIgnoringCase(domain, "localhost") || IsLoopback(domain)) {
    return "只有这台电脑认得";
  }
  if (IsAddress(domain)) return {};
  return IsInHostsFile(hostsFile, "127.0.0.1", domain) ? "别的电脑未必认得" : "";
}

}  // namespace core
