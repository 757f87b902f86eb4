// POST requests: which program of cgi-bin runs, and what the client gets.

#include <algorithm>

#include "files/files.h"
#include "platform/text_case.h"
#include "web/url_decoding.h"
#include "web/web_server.h"

namespace ModWeb {
namespace {

constexpr std::size_t kExtensionLength = 4;

bool IsProgram(const std::string& resource) {
  const std::size_t length = std::min(resource.size(), kExtensionLength);
  const std::string upper = platform::UpperCase(resource.substr(resource.size() - length));
  return upper == ".CGI" || upper == ".EXE";
}

}  // namespace

using net::Task;
using platform::File;

Task<> WebServer::ServePostRequest(std::string requestText, Client client) {
  CurrentResource_ =
      CurrentResource_ != "/" ? WithoutFirstCharacter(CurrentResource_) : options_.FirstDefaultPage;
  const std::string resource = CurrentResource_;
  if (!IsProgram(resource) || !options_.MayRunPrograms()) {
    Task<> refusing = RefusePost(client);
    co_await refusing;
    co_return;
  }
  std::string body = ExtractPostBody(requestText);
  requestText = {};  // or it would be kept while the program runs
  Task<File> running = RunCgiProgram(PathInRoot("cgi-bin\\"), resource, std::move(body));
  File page = co_await running;
  Task<> sending = SendPage(std::move(page), client);
  co_await sending;
}

Task<> WebServer::RefusePost(Client client) {
  SendNotFoundPage(client);
  try {
    co_await net::YieldToEvents();
  } catch (const net::HandlerEnded&) {
    // Who left at once has asked all the same.
  }
  LogAccess(client, "Failed!");
  client->Close();
}

// The page is named after the program and lies in the Web root itself, not in cgi-bin.
Task<File> WebServer::RunCgiProgram(std::string cgiDir, std::string resource, std::string body) {
  const std::string outName = resource.substr(0, resource.size() - kExtensionLength) + ".htm";
  CgiJob job = {.program = cgiDir + resource,
                .inPath = cgiDir + "TempFileIn",
                .outPath = PathInRoot(outName),
                .pagePath = cgiDir + "TempFileOut",
                .body = std::move(body)};
  if (!ModCommon::FileExists(job.program)) co_return File();
  Task<File> running = cgi_.Run(std::move(job));
  File page = co_await running;
  co_await net::YieldToEvents();
  co_return std::move(page);
}

}  // namespace ModWeb
