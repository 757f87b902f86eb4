#include "web/search_copies.h"

#include <algorithm>
#include <utility>

#include "core/service_environment.h"
#include "files/files.h"
#include "platform/system_message.h"
#include "text/path_text.h"

namespace ModWeb {
namespace {

using net::Task;
using platform::File;

constexpr std::size_t kMostWaiting = 100;
constexpr std::size_t kPieceBytes = std::size_t{256} * 1024;

}  // namespace

SearchCopies::SearchCopies(const core::ServiceEnvironment& environment)
    : program_(environment.program),
      worker_(
          environment.loop, [this](const std::string& error) { program_.errors.LogError(error); },
          [this] { return Work(); }) {}

// While there is a search index, every page that was served is collected beside it.
void SearchCopies::AddServed(const files::ClientFiles& site, const std::string& root,
                             const std::string& resource) {
  const std::string begin = ModCommon::AddSlash(root);
  if (!site.FileExists(begin + "Search\\Search.ifo")) return;
  const std::string name = "Search\\" + resource;
  Add({.from = site.Settled(begin + resource), .to = site.Settled(begin + name), .name = name});
}

void SearchCopies::Add(Job job) {
  const bool waits = std::find(waiting_.begin(), waiting_.end(), job) != waiting_.end();
  if (waits || waiting_.size() >= kMostWaiting) return;
  waiting_.push_back(std::move(job));
  worker_.Start();
}

void SearchCopies::Stop() {
  waiting_.clear();
  worker_.Stop();
}

Task<> SearchCopies::Work() {
  while (!waiting_.empty()) {
    Job job = std::move(waiting_.front());
    waiting_.pop_front();
    const std::string name = job.name;
    Task<std::error_code> copying = Copy(std::move(job));
    const std::error_code error = co_await copying;
    if (error) program_.errors.LogError(name + ": " + platform::SystemMessage(error));
  }
}

Task<std::error_code> SearchCopies::Copy(Job job) {
  std::error_code error;
  File source = files::OpenFile(job.from, File::Mode::kRead, error);
  if (error) co_return error;
  // Emptying the copy would empty the page.
  if (files::StampOf(job.from) == files::StampOf(job.to)) co_return error;
  File target = files::OpenFile(job.to, File::Mode::kReplace, error);
  std::string piece(kPieceBytes, '\0');
  for (std::size_t count = kPieceBytes; count == kPieceBytes && !error;) {
    count = source.Read(piece.data(), piece.size(), error);
    if (!error) target.Write(std::string_view(piece).substr(0, count), error);
    if (count == kPieceBytes) co_await net::YieldToEvents();
  }
  co_return error;
}

}  // namespace ModWeb
