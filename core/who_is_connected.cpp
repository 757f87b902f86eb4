#include "core/who_is_connected.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>

namespace core {
namespace {

// What a person is said to do if several connections do different things: the last of these.
constexpr std::array kDoing = {"已连接", "正在收发邮件", "正在上传", "正在下载"};

std::size_t RankOf(net::Activity::Kind kind) {
  using Kind = net::Activity::Kind;
  switch (kind) {
    case Kind::kDownload:
      return 3;
    case Kind::kUpload:
      return 2;
    case Kind::kReceiveMail:
    case Kind::kCollectMail:
      return 1;
    default:
      return 0;
  }
}

}  // namespace

std::string WhoIsConnected(const std::vector<net::ConnectionReport>& connections) {
  std::map<std::string, std::size_t> people;
  for (const net::ConnectionReport& each : connections) {
    std::size_t& rank = people[each.address];
    rank = std::max(rank, RankOf(each.activity.kind));
  }
  std::string text;
  for (std::size_t rank = kDoing.size(); rank-- > 0;) {
    const auto count = std::count_if(people.begin(), people.end(),
                                     [rank](const auto& person) { return person.second == rank; });
    if (count == 0) continue;
    text += (text.empty() ? "" : "，") + std::to_string(count) + " 个人" + kDoing.at(rank);
  }
  return text;
}

}  // namespace core
