#pragma once

// What the clients of the services did lately, in memory only: the last activities of each service,
// in the order in which they ended. It knows nothing of how they are shown; a view compares
// Version to see whether it has to look again.
//
// Bounded in entries and bytes, the oldest going first, whatever the clients send.

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>

#include "core/service.h"
#include "net/connection_report.h"

namespace core {

class ActivityRecord final : public net::ActivityObserver {
 public:
  static constexpr std::size_t kMostEntries = 1000;    // of a service
  static constexpr std::size_t kMostBytes = 1U << 20;  // of a service's texts

  /// An activity, or several in a row that differ in time and bytes only: the times are those of
  /// the last, the traffic is the sum.
  struct Entry : net::EndedActivity {
    int count = 1;
  };

  ActivityRecord() = default;
  ActivityRecord(const ActivityRecord&) = delete;
  ActivityRecord& operator=(const ActivityRecord&) = delete;

  /// Adds to the record of the service that has the protocol.
  void OnActivityEnded(const net::EndedActivity& ended) override;

  /// The observer that adds to the record of `service`, to be given to Service::Observe. It lives
  /// as long as this object.
  net::ActivityObserver& Of(ServiceKind service) { return logs_[IndexOf(service)]; }

  /// Newest last.
  const std::deque<Entry>& EntriesOf(ServiceKind service) const {
    return logs_[IndexOf(service)].entries;
  }

  /// Changes with every change of EntriesOf.
  std::uint64_t Version(ServiceKind service) const { return logs_[IndexOf(service)].version; }

  void Clear(ServiceKind service);
  void Clear();

 private:
  // The record of one service.
  struct Log final : net::ActivityObserver {
    void OnActivityEnded(const net::EndedActivity& ended) override;
    void Add(Entry entry);

    std::deque<Entry> entries;
    std::size_t bytes = 0;
    std::uint64_t version = 0;
  };

  std::array<Log, kServices.size()> logs_;
};

}  // namespace core
