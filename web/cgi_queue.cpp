#include "web/cgi_queue.h"

#include <chrono>
#include <filesystem>
#include <stdexcept>

#include "core/code_page.h"
#include "core/files.h"
#include "platform/native_path.h"
#include "platform/process.h"
#include "platform/system_message.h"

namespace ModWeb {
namespace {

constexpr std::chrono::seconds kLongestRun{30};

std::filesystem::path AbsolutePath(const std::string& pathText) {
  std::error_code error;
  const std::filesystem::path path = platform::ExistingPath(pathText);
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute;
}

// What a started program and the one who waits for it share; the program may outlive the wait.
struct Exit {
  bool ended = false;
  core::WaitList waiters;

  void Happen() {
    ended = true;
    waiters.WakeAll();
  }
};

void WriteInput(const CgiJob& job) {
  if (ModCommon::FileExists(job.inPath)) core::RemoveFile(job.inPath);
  const std::error_code error = core::WriteFile(job.inPath, core::ToSystem(job.body) + "\r\n");
  if (error) throw std::runtime_error("TempFileIn: " + platform::SystemMessage(error));
}

}  // namespace

// One run, shared by the client's handler and the service's.
struct CgiQueue::Ticket {
  CgiJob job;
  bool done = false;
  bool wanted = true;
  CgiPage page;
  std::string failure;
  core::WaitList waiters;
};

CgiPage::~CgiPage() {
  if (!path_.empty()) core::RemoveFile(path_);
}

CgiQueue::CgiQueue(const core::ServiceEnvironment& environment)
    : program_(environment.program), loop_(environment.loop) {}

core::Task<CgiPage> CgiQueue::Run(CgiJob job) {
  if (!runs_) {
    runs_ = std::make_shared<core::HandlerScope>(
        loop_, [this](const std::string& error) { program_.errors.LogError(error); });
  }
  auto ticket = std::make_shared<Ticket>();
  ticket->job = std::move(job);
  runs_->Start(Perform(ticket));
  try {
    while (!ticket->done) {
      core::WaitList::Awaiter done = ticket->waiters.Wait();
      co_await done;
    }
  } catch (const core::HandlerEnded&) {
    ticket->wanted = false;
    throw;
  }
  if (!ticket->failure.empty()) throw std::runtime_error(ticket->failure);
  co_return std::move(ticket->page);
}

void CgiQueue::Stop() {
  if (const auto runs = std::exchange(runs_, nullptr)) runs->End();
}

core::Task<> CgiQueue::Perform(std::shared_ptr<Ticket> ticket) {
  while (busy_) {
    core::WaitList::Awaiter turn = turns_.Wait();
    co_await turn;
  }
  // Gives the turn to the next one, whichever way this run ends.
  struct Turn {
    explicit Turn(CgiQueue& owner) : queue(owner) { queue.busy_ = true; }
    ~Turn() {
      queue.busy_ = false;
      queue.turns_.WakeAll();
    }
    CgiQueue& queue;
  } turn(*this);

  if (!ticket->wanted) co_return;
  co_await Execute(ticket);
  ticket->page = TakeAside(ticket->job);
  ticket->done = true;
  ticket->waiters.WakeAll();
}

core::Task<> CgiQueue::Execute(std::shared_ptr<Ticket> ticket) {
  try {
    WriteInput(ticket->job);
    co_await RunProgram(ticket);
  } catch (const core::HandlerEnded&) {
    throw;
  } catch (const std::exception& error) {
    ticket->failure = error.what();
  }
}

core::Task<> CgiQueue::RunProgram(std::shared_ptr<Ticket> ticket) {
  const CgiJob& job = ticket->job;
  const auto exit = std::make_shared<Exit>();
  std::error_code error;
  platform::StartProgram(
      loop_.Executor(), AbsolutePath(job.program),
      {AbsolutePath(job.inPath), AbsolutePath(job.outPath)}, "  ", [exit] { exit->Happen(); },
      error);
  if (error) {
    program_.errors.LogError(job.program + ": " + platform::SystemMessage(error));
    co_return;
  }
  core::Timer patience(loop_);
  patience.Start(kLongestRun, [exit] { exit->Happen(); });
  while (!exit->ended) {
    core::WaitList::Awaiter ended = exit->waiters.Wait();
    co_await ended;
  }
}

// Beside the input file: in the same file system, so that the program does not notice if it still
// writes. A page that cannot be moved is sent from where it is.
CgiPage CgiQueue::TakeAside(const CgiJob& job) {
  if (!ModCommon::FileExists(job.outPath)) return {};
  const std::string aside = job.pagePath + std::to_string(++pagesTaken_);
  if (ModCommon::FileExists(aside)) core::RemoveFile(aside);  // of a program that was killed
  return CgiPage(core::RenamePath(job.outPath, aside) ? job.outPath : aside);
}

}  // namespace ModWeb
