#include "core/cut_off.h"

#include <set>

namespace core {
namespace {

// A transfer of unknown size moves bytes as well, but so does every answer.
bool IsTransfer(const net::Activity& activity) { return activity.total > 0; }

std::string People(std::size_t count) { return std::to_string(count) + " 个人"; }

}  // namespace

std::string CutOffText(const std::vector<net::ConnectionReport>& connections) {
  std::set<std::string> connected;
  std::set<std::string> transferring;
  for (const net::ConnectionReport& each : connections) {
    connected.insert(each.address);
    if (IsTransfer(each.activity)) transferring.insert(each.address);
  }
  if (connected.empty()) return {};
  const std::string text = People(connected.size()) + "正在连接";
  if (transferring.empty()) return text + "。";
  return text + "，其中 " + People(transferring.size()) + "的传输还没有完成。";
}

}  // namespace core
