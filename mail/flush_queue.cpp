#include "mail/flush_queue.h"

#include <memory>

namespace ModMail {

FlushQueue::FlushQueue(const core::ServiceEnvironment& environment, UnflushedMessages& messages)
    : messages_(messages),
      worker_(
          environment.loop,
          [&program = environment.program](const std::string& error) {
            program.errors.LogError(error);
          },
          [this] { return Work(); }) {}

bool FlushQueue::Begin() {
  if (messages_.AreMany()) worker_.Start();
  return messages_.AreTooMany();
}

net::Task<> FlushQueue::AwaitDisk() {
  while (Begin()) {
    net::WaitList::Awaiter flushed = waiters_.Wait();
    co_await flushed;
  }
}

void FlushQueue::Stop() {
  worker_.Stop();
  thread_.Finish();
}

// Without the means to do it beside the loop, it is done at once.
net::Task<> FlushQueue::Work() {
  while (messages_.AreMany()) {
    try {
      net::Task<> flushing = FlushBeside();
      co_await flushing;
    } catch (const net::HandlerEnded&) {
      throw;
    } catch (const std::exception&) {
      messages_.Flush();
    }
    waiters_.WakeAll();
  }
}

net::Task<> FlushQueue::FlushBeside() {
  const auto batch = std::make_shared<UnflushedMessages::Batch>(messages_.Open());
  net::Task<> flushing = thread_.Run([batch] { batch->Flush(); });
  co_await flushing;
  messages_.Close(*batch);
}

}  // namespace ModMail
