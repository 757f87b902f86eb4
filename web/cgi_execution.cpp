// POST requests: which program of cgi-bin runs, and what the client gets.

#include "core/files.h"
#include "core/paths.h"
#include "platform/text_case.h"
#include "web/url_decoding.h"
#include "web/web_server.h"

namespace ModWeb {
namespace {

constexpr std::size_t kExtensionLength = 4;

bool IsProgram(const std::string& resource) {
  const std::string upper = platform::UpperCase(resource);
  return upper.ends_with(".CGI") || upper.ends_with(".EXE");
}

}  // namespace

using core::Task;

Task<> WebServer::ServePostRequest(std::string requestText, Client client) {
  CurrentResource_ =
      CurrentResource_ != "/" ? WithoutFirstCharacter(CurrentResource_) : options_.FirstDefaultPage;
  const std::string resource = CurrentResource_;
  if (!IsProgram(resource) || !options_.MayRunPrograms()) {
    co_await RefusePost(client);
    co_return;
  }
  const std::string body = ExtractPostBody(requestText);
  const std::string cgiDir = PathInRoot("cgi-bin\\");
  Task<CgiPage> running = RunCgiProgram(cgiDir, resource, body);
  const CgiPage page = co_await running;
  co_await SendHtmlFile(page.Path(), client);
}

Task<> WebServer::RefusePost(Client client) {
  SendNotFoundPage(client);
  try {
    co_await core::YieldToEvents();
  } catch (const core::HandlerEnded&) {
    // Who left at once has asked all the same.
  }
  LogAccess(client, "Failed!");
  client->Close();
}

// The page is named after the program and lies in the Web root itself, not in cgi-bin.
Task<CgiPage> WebServer::RunCgiProgram(std::string cgiDir, std::string resource, std::string body) {
  const std::string outName = resource.substr(0, resource.size() - kExtensionLength) + ".htm";
  CgiJob job = {.program = cgiDir + resource,
                .inPath = cgiDir + "TempFileIn",
                .outPath = PathInRoot(outName),
                .pagePath = cgiDir + "TempFileOut",
                .body = std::move(body)};
  if (!ModCommon::FileExists(job.program)) co_return CgiPage();
  Task<CgiPage> running = cgi_.Run(std::move(job));
  CgiPage page = co_await running;
  co_await core::YieldToEvents();
  co_return std::move(page);
}

}  // namespace ModWeb
