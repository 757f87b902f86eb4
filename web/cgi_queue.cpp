#include "web/cgi_queue.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <utility>

#include "core/service_environment.h"
#include "files/files.h"
#include "platform/native_path.h"
#include "platform/process.h"
#include "platform/system_message.h"

namespace ModWeb {
namespace {

using platform::File;

constexpr std::chrono::seconds kLongestRun{30};
constexpr std::chrono::milliseconds kPatienceAtTheEnd{1000};

std::filesystem::path AbsolutePath(const std::string& pathText) {
  std::error_code error;
  const std::filesystem::path path = platform::ExistingPath(pathText);
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute;
}

void WriteInput(const CgiJob& job) {
  if (ModCommon::FileExists(job.inPath)) files::RemoveFile(job.inPath);
  const std::error_code error = files::WriteFile(job.inPath, job.body + "\r\n");
  if (error) throw std::runtime_error("TempFileIn: " + platform::SystemMessage(error));
}

}  // namespace

// A run of a program. The program may outlive the run of the service.
class CgiQueue::Execution : public std::enable_shared_from_this<CgiQueue::Execution> {
 public:
  Execution(net::EventLoop& loop, std::string outPath)
      : loop_(loop),
        outPath_(std::move(outPath)),
        before_(files::StampOf(outPath_)),
        patience_(loop) {}

  void Start(const CgiJob& job, std::error_code& error) {
    const auto onExit = [self = shared_from_this()] { self->End(); };
    program_ = platform::StartProgram(loop_.Executor(), AbsolutePath(job.program),
                                      {AbsolutePath(job.inPath), AbsolutePath(job.outPath)}, "  ",
                                      onExit, error);
    if (!error) patience_.Start(kLongestRun, onExit);
  }

  /// Whether the program has ended, or is no longer waited for.
  bool IsOver() const { return isOver_; }
  net::WaitList& Waiters() { return waiters_; }

  /// The page that the program wrote, taken out of the site.
  File TakePage(const std::string& aside) {
    if (!HasWritten()) return {};
    // `aside` is in the same file system, which makes this one step. The file loses its name as
    // soon as it is open.
    if (ModCommon::FileExists(aside)) files::RemoveFile(aside);
    const std::string& place = files::RenamePath(outPath_, aside) ? outPath_ : aside;
    File page = files::OpenIfExists(place);
    files::RemoveFile(place);
    return page;
  }

  /// Discards the page, now or when it is written.
  void Abandon() {
    isAbandoned_ = true;
    RemovePage();
  }

  /// Ends the program, because it cannot be watched any longer.
  void EndWithin(std::chrono::milliseconds patience) {
    if (std::exchange(isOver_, true)) return;
    patience_.Stop();
    program_->EndWithin(patience);
    RemovePage();
  }

 private:
  void End() {
    if (std::exchange(isOver_, true)) return;
    patience_.Stop();
    if (isAbandoned_) RemovePage();
    waiters_.WakeAll();
  }

  bool HasWritten() const {
    const auto now = files::StampOf(outPath_);
    return now && now != before_;
  }

  void RemovePage() {
    if (HasWritten()) files::RemoveFile(outPath_);
  }

  net::EventLoop& loop_;
  std::string outPath_;
  std::optional<platform::FileStamp> before_;  // of a page that the site has under this name
  std::unique_ptr<platform::StartedProgram> program_;
  net::Timer patience_;
  net::WaitList waiters_;
  bool isOver_ = false;
  bool isAbandoned_ = false;
};

// The request of one client.
struct CgiQueue::Ticket {
  explicit Ticket(CgiJob wanted) : job(std::move(wanted)) {}

  CgiJob job;
  bool done = false;
  File page;
  std::string failure;
  net::WaitList waiters;
};

// A ticket's place in the queue, until its turn comes or its client leaves.
class CgiQueue::Place {
 public:
  Place(CgiQueue& queue, std::shared_ptr<Ticket> ticket)
      : queue_(queue), ticket_(std::move(ticket)) {
    queue_.waiting_.push_back(ticket_);
    queue_.bytesWaiting_ += ticket_->job.body.size();
  }
  ~Place() {
    std::erase(queue_.waiting_, ticket_);
    queue_.bytesWaiting_ -= ticket_->job.body.size();
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

 private:
  CgiQueue& queue_;
  std::shared_ptr<Ticket> ticket_;
};

CgiQueue::CgiQueue(const core::ServiceEnvironment& environment)
    : program_(environment.program),
      loop_(environment.loop),
      worker_(
          environment.loop, [this](const std::string& error) { program_.errors.LogError(error); },
          [this] { return Work(); }) {}

CgiQueue::~CgiQueue() {
  Stop();
  if (execution_) execution_->EndWithin(kPatienceAtTheEnd);
}

net::Task<File> CgiQueue::Run(CgiJob job) {
  if (IsFull(job)) {
    RefuseOverflow();
    co_return File();
  }
  const auto ticket = std::make_shared<Ticket>(std::move(job));
  const Place place(*this, ticket);
  worker_.Start();
  while (!ticket->done) {
    net::WaitList::Awaiter done = ticket->waiters.Wait();
    co_await done;
  }
  if (!ticket->failure.empty()) throw std::runtime_error(ticket->failure);
  co_return std::move(ticket->page);
}

bool CgiQueue::IsFull(const CgiJob& job) const {
  return waiting_.size() >= kMostWaiting || bytesWaiting_ + job.body.size() > kMostBytesWaiting;
}

// Logged once, or the log would be flooded instead of the memory.
void CgiQueue::RefuseOverflow() {
  if (std::exchange(hasOverflowed_, true)) return;
  program_.errors.LogError("cgi-bin: too many requests wait for a program");
}

void CgiQueue::Stop() {
  if (execution_) execution_->Abandon();
  worker_.Stop();
}

net::Task<> CgiQueue::Work() {
  // A stop may have left a program running.
  net::Task<> former = AwaitExecution();
  co_await former;
  while (!waiting_.empty()) {
    const std::shared_ptr<Ticket> ticket = waiting_.front();
    waiting_.pop_front();
    net::Task<> executing = Execute(ticket);
    co_await executing;
    ticket->done = true;
    ticket->waiters.WakeAll();
  }
  hasOverflowed_ = false;
}

net::Task<> CgiQueue::AwaitExecution() {
  while (execution_ && !execution_->IsOver()) {
    net::WaitList::Awaiter over = execution_->Waiters().Wait();
    co_await over;
  }
  execution_.reset();
}

net::Task<> CgiQueue::Execute(std::shared_ptr<Ticket> ticket) {
  try {
    WriteInput(ticket->job);
    net::Task<> running = RunProgram(ticket);
    co_await running;
  } catch (const net::HandlerEnded&) {
    throw;
  } catch (const std::exception& error) {
    ticket->failure = error.what();
  }
}

net::Task<> CgiQueue::RunProgram(std::shared_ptr<Ticket> ticket) {
  const CgiJob& job = ticket->job;
  const auto execution = std::make_shared<Execution>(loop_, job.outPath);
  std::error_code error;
  execution->Start(job, error);
  if (error) {
    program_.errors.LogError(job.program + ": " + platform::SystemMessage(error));
    co_return;
  }
  execution_ = execution;
  net::Task<> over = AwaitExecution();
  co_await over;
  ticket->page = execution->TakePage(job.pagePath + std::to_string(++pagesTaken_));
}

}  // namespace ModWeb
