#include "core/activity_news.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/activity_text.h"

namespace core {
namespace {

using Kind = net::Activity::Kind;
using Entry = ActivityRecord::Entry;

bool IsNews(const Entry& entry) {
  const Kind kind = entry.activity.kind;
  return entry.end == net::ActivityEnd::kComplete &&
         (kind == Kind::kUpload || kind == Kind::kReceiveMail);
}

std::string Summary(const std::vector<const Entry*>& news) {
  int files = 0;
  int messages = 0;
  for (const Entry* entry : news) {
    (entry->activity.kind == Kind::kUpload ? files : messages) += entry->count;
  }
  std::string text;
  if (files > 0) text += std::to_string(files) + " 个文件上传完成。";
  if (messages > 0) text += (text.empty() ? "" : "\n") + std::to_string(messages) + " 封邮件到达。";
  return text;
}

}  // namespace

std::string ActivityNews::Next(const ActivityRecord& record) {
  std::vector<const Entry*> news;
  auto latest = last_;
  for (const ServiceKind service : kServices) {
    const auto& entries = record.EntriesOf(service);
    for (auto entry = entries.rbegin(); entry != entries.rend() && entry->ended > last_; ++entry) {
      latest = std::max(latest, entry->ended);
      if (IsNews(*entry)) news.push_back(&*entry);
    }
  }
  last_ = latest;
  if (!std::exchange(begun_, true) || news.empty()) return {};
  if (news.size() > 1) return Summary(news);
  return ActivityText(news.front()->activity) + "\n来自 " + news.front()->address;
}

}  // namespace core
