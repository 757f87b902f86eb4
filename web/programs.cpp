#include "web/programs.h"

#include <utility>

#include "core/protection.h"
#include "text/path_text.h"

namespace ModWeb {

using net::Task;
using platform::File;

namespace {

constexpr std::size_t kExtensionLength = 4;

}  // namespace

Programs::Programs(const core::ServiceEnvironment& environment, const files::ClientFiles& site)
    : protection_(environment.protection),
      site_(site),
      files_(folder_, environment.protection.OfFiles()),
      queue_(environment) {}

void Programs::SetRoot(const std::string& root) {
  root_ = ModCommon::AddSlash(root);
  folder_ = root_ + "cgi-bin\\";
  protection_.SetProgramFolder(folder_);
}

bool Programs::Exists(const std::string& resource) const {
  return files_.FileExists(folder_ + resource);
}

// The page is named after the program and lies in the Web root itself, not in cgi-bin.
Task<File> Programs::Run(std::string resource, std::string body) {
  const std::string outName = resource.substr(0, resource.size() - kExtensionLength) + ".htm";
  CgiJob job = {.program = files_.Settled(folder_ + resource),
                .inPath = folder_ + "TempFileIn",
                .outPath = site_.Settled(root_ + outName),
                .pagePath = folder_ + "TempFileOut",
                .body = std::move(body)};
  Task<File> running = queue_.Run(std::move(job));
  File page = co_await running;
  co_await net::YieldToEvents();
  co_return std::move(page);
}

}  // namespace ModWeb
