#include "core/activity_record.h"

#include <new>
#include <utility>

#include "text/printable_text.h"

namespace core {
namespace {

// A longer path names nothing on any system that clients can make it name.
constexpr std::size_t kLongestPath = 4096;
constexpr std::size_t kLongestText = 260;

ServiceKind ServiceOf(const std::string& protocol) {
  if (protocol == "HTTP") return ServiceKind::kWeb;
  return protocol == "FTP" ? ServiceKind::kFtp : ServiceKind::kMail;
}

ActivityRecord::Entry EntryOf(const net::EndedActivity& ended) {
  ActivityRecord::Entry entry = {ended};
  net::Activity& activity = entry.activity;
  activity.what = text::Printable(ended.activity.what, kLongestText);
  activity.detail = text::Printable(ended.activity.detail, kLongestText);
  if (activity.path.size() > kLongestPath) activity.path.clear();
  return entry;
}

std::size_t BytesOf(const ActivityRecord::Entry& entry) {
  const net::Activity& activity = entry.activity;
  return activity.what.size() + activity.detail.size() + activity.path.size();
}

// Two messages are different things even if they are for the same user.
bool IsRepetition(const ActivityRecord::Entry& entry, const ActivityRecord::Entry& last) {
  return entry.address == last.address && entry.end == last.end &&
         entry.activity.kind == last.activity.kind && entry.activity.what == last.activity.what &&
         entry.activity.detail == last.activity.detail;
}

void Gather(ActivityRecord::Entry& last, const ActivityRecord::Entry& entry) {
  ++last.count;
  last.slot = entry.slot;
  last.ended = entry.ended;
  last.activity.began = entry.activity.began;
  last.activity.total = entry.activity.total;
  last.activity.traffic.received += entry.activity.traffic.received;
  last.activity.traffic.sent += entry.activity.traffic.sent;
}

}  // namespace

void ActivityRecord::OnActivityEnded(const net::EndedActivity& ended) {
  logs_[IndexOf(ServiceOf(ended.protocol))].OnActivityEnded(ended);
}

void ActivityRecord::Clear() {
  for (const ServiceKind service : kServices) Clear(service);
}

void ActivityRecord::Clear(ServiceKind service) {
  Log& log = logs_[IndexOf(service)];
  log.entries.clear();
  log.bytes = 0;
  ++log.version;
}

void ActivityRecord::Log::OnActivityEnded(const net::EndedActivity& ended) {
  try {
    Add(EntryOf(ended));
  } catch (const std::bad_alloc&) {
    // Clients are served without a record, too.
  }
}

void ActivityRecord::Log::Add(Entry entry) {
  if (!entries.empty() && IsRepetition(entry, entries.back())) {
    Gather(entries.back(), entry);
  } else {
    const std::size_t more = BytesOf(entry);
    entries.push_back(std::move(entry));
    bytes += more;
  }
  while (entries.size() > kMostEntries || bytes > kMostBytes) {
    bytes -= BytesOf(entries.front());
    entries.pop_front();
  }
  ++version;
}

}  // namespace core
