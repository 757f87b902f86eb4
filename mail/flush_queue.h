#pragma once

// Flushes messages that are being received on a thread beside the loop, so that only their senders
// wait for the disk. All that is unflushed goes to the disk together.

#include "core/service_environment.h"
#include "mail/unflushed_messages.h"
#include "net/background_worker.h"
#include "net/side_thread.h"

namespace ModMail {

class FlushQueue {
 public:
  /// `messages` must outlive the queue.
  FlushQueue(const core::ServiceEnvironment& environment, UnflushedMessages& messages);

  /// Begins to flush what is worth it. Whether the sender has to await the disk.
  bool Begin();

  /// Returns once more may be appended.
  net::Task<> AwaitDisk();

  /// What is unflushed stays so. Waits for the disk if a flush is under way: Windows keeps the name
  /// of a removed message for as long as it is open.
  void Stop();

 private:
  net::Task<> Work();
  net::Task<> FlushBeside();

  UnflushedMessages& messages_;
  net::SideThread thread_;
  net::WaitList waiters_;
  net::BackgroundWorker worker_;
};

}  // namespace ModMail
