#include "core/reach_verdict.h"

#include <vector>

#include "core/service_addresses.h"

namespace core {
namespace {

using Finding = ReachTest::Finding;
using Kind = platform::FirewallState::Kind;

constexpr const char* kIfAFriendCannot =
    "\n别人还是打不开时，请看他连的是不是同一个网络\n（不是访客 Wi-Fi 或手机流量），"
    "他的 VPN 或防火墙是否拦住了。\n路上的设备从这台电脑测试不出来。";

std::string PlaceOf(const std::string& address, int port) {
  return address + " 的端口 " + std::to_string(port);
}

// "80", and with `between` as in "1024:1279" those of data connections.
std::vector<std::string> PortsToOpen(const ReachTarget& target, const char* between) {
  std::vector<std::string> ports = {std::to_string(target.ports.first)};
  if (target.service == ServiceKind::kMail) ports.push_back(std::to_string(target.ports.second));
  if (target.service == ServiceKind::kFtp) {
    ports.push_back(std::to_string(kFirstFtpDataPort) + between + std::to_string(kLastFtpDataPort));
  }
  return ports;
}

std::string UfwCommand(const ReachTarget& target) {
  std::string command;
  for (const std::string& port : PortsToOpen(target, ":")) {
    command += (command.empty() ? "sudo ufw allow " : " && sudo ufw allow ") + port + "/tcp";
  }
  return command;
}

// At once, and after the next start of the computer.
std::string FirewalldCommand(const ReachTarget& target) {
  std::string options;
  for (const std::string& port : PortsToOpen(target, "-"))
    options += " --add-port=" + port + "/tcp";
  return "sudo firewall-cmd" + options + " && sudo firewall-cmd --permanent" + options;
}

std::string WindowsCommand(const ReachTarget& target) {
  return R"(netsh advfirewall firewall add rule name="Tarnwerk" dir=in action=allow program=")" +
         target.executable + "\"";
}

struct FirewallAdvice {
  std::string text;
  std::string command = {};
};

FirewallAdvice Blocking(const char* name, std::string command) {
  return {std::string("\n这台电脑的防火墙 ") + name +
              " 开着，可能挡住别人。\n如果还没有放行，请在终端中运行复制的命令。",
          std::move(command)};
}

FirewallAdvice AdviceOn(const ReachTarget& target) {
  switch (target.firewall.kind) {
    case Kind::kUfw:
      return Blocking("ufw", UfwCommand(target));
    case Kind::kFirewalld:
      return Blocking("firewalld", FirewalldCommand(target));
    case Kind::kNftables:
      return {
          "\n这台电脑设有防火墙规则（nftables），它们可能挡住别人，\n请管理员查看是否放行了端口 " +
          PortsText(target.service, target.ports) + "。"};
    case Kind::kWindows:
      if (target.firewall.admitsThisProgram) return {"\nWindows 防火墙已允许本程序。"};
      return {
          "\nWindows 防火墙开着，还没有允许本程序，会挡住别人。"
          "\n请以管理员身份打开命令提示符，运行复制的命令。",
          WindowsCommand(target)};
    case Kind::kNoneFound:
      break;
  }
  return {"\n没有发现这台电脑开着防火墙。"};
}

ReachVerdict Works(const ReachTarget& target) {
  const FirewallAdvice advice = AdviceOn(target);
  return {"测试通过：在这台电脑上，" + PlaceOf(target.address, target.ports.first) + " 有应答。" +
              advice.text + kIfAFriendCannot,
          advice.command, true};
}

}  // namespace

ReachVerdict NotRunning() { return {"服务没有运行，谁也连不上。请先启动它。"}; }

ReachVerdict OnlyThisMachine() {
  return {"在“工具”菜单的“安全”里选了“仅本机”，所以别人都连不上。\n要让他们连接，请在那里更改。"};
}

ReachVerdict NotInANetwork() {
  return {"这台电脑没有连接到网络，只有它自己能打开。\n请先连上有线网络或 Wi-Fi，再测试。"};
}

ReachVerdict TooManyClients() {
  return {"现在连接的人多，测试会占去他们的位置，所以没有测试。\n请等连接的人少一些再试。"};
}

ReachVerdict VerdictOn(const ReachTarget& target, Finding finding, int port) {
  const std::string place = PlaceOf(target.address, port);
  switch (finding) {
    case Finding::kReached:
      return Works(target);
    case Finding::kRefused:
      return {place + " 连不上：没有程序在那里接听。\n请停止服务，再启动一次。"};
    case Finding::kNoAnswer: {
      const FirewallAdvice advice = AdviceOn(target);
      return {place + " 没有应答：连接请求被拦下了。" + advice.text, advice.command};
    }
    case Finding::kSilent:
      return {place + " 能连上，但是什么也没有说。\n可能有别的程序或代理占着它。"};
    case Finding::kStranger:
      return {place + " 有应答，但不是本程序的服务。\n请在选项中改用别的端口。"};
    case Finding::kTurnedAway:
      break;
  }
  return {place + " 能连上，但马上被断开。\n可能连接的人已满，也可能有防火墙或代理在中间。"};
}

}  // namespace core
