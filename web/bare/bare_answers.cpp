#include "web/bare/bare_answers.h"

#include <utility>

#include "net/handler_scope.h"
#include "web/web_log.h"

namespace ModWeb {

using net::Task;
using platform::File;

namespace {

Task<> Ignore() { co_return; }

}  // namespace

BareAnswers::BareAnswers(const WebSite& site)
    : site_(site),
      interpreter_(*this, site_.options, session_),
      sender_(site_.files, site_.program.errors, site_.options.answers) {}

// Nothing of an arrival is kept for a later one, and its bytes are gone when the answer begins.
Task<> BareAnswers::OnWebDataArrival(Client client) {
  Decision decision = interpreter_.Interpret(client->GetData());
  if (!decision.shown.empty()) ShowRequest(*client, decision);
  if (!decision.fault.empty()) {
    site_.program.errors.LogError(decision.fault);
    client->Finish(net::ActivityEnd::kFailed);
  }
  switch (decision.action) {
    case Decision::Action::kSendFile:
      return sender_.SendWebFile(site_.PathOf(decision.resource), std::move(client));
    case Decision::Action::kSendHtmlFile:
      return ServeHtmlFile(std::move(decision.resource), std::move(client));
    case Decision::Action::kRunProgram:
      return ServeProgram(std::move(decision.resource), std::move(decision.body),
                          std::move(client));
    case Decision::Action::kRefuseGet:
      return RefuseGet(std::move(client));
    case Decision::Action::kRefusePost:
      return RefusePost(std::move(client));
    case Decision::Action::kNothing:
      break;
  }
  return Ignore();
}

void BareAnswers::ShowRequest(net::Connection& client, Decision& decision) const {
  net::Activity activity = {.kind = decision.kind, .what = std::move(decision.shown)};
  if (client.IsObserved() && !decision.resource.empty()) {
    const bool isProgram = decision.kind == net::Activity::Kind::kProgram;
    activity.path = site_.PathOf((isProgram ? "cgi-bin\\" : "") + decision.resource);
  }
  client.Begin(std::move(activity));
}

// Files

Task<> BareAnswers::ServeHtmlFile(std::string resource, Client client) {
  Task<> sending = sender_.SendHtmlFile(site_.PathOf(resource), client);
  co_await sending;
  site_.searchCopies.AddServed(site_.files, site_.options.WebRootDir, resource);
}

bool BareAnswers::HasFile(const std::string& name) const {
  return site_.files.FileExists(site_.PathOf(name));
}

// CGI programs

Task<> BareAnswers::ServeProgram(std::string resource, std::string body, Client client) {
  File page;
  const bool found = site_.programs.Exists(resource);
  if (found) {
    Task<File> running = site_.programs.Run(std::move(resource), std::move(body));
    page = co_await running;
  }
  Task<> sending = sender_.SendPage(
      std::move(page), client, found ? net::ActivityEnd::kFailed : net::ActivityEnd::kNotFound);
  co_await sending;
}

// Refusals

Task<> BareAnswers::RefuseGet(Client client) {
  SendNotFoundPage(*client);
  client->Finish(net::ActivityEnd::kRefused);
  LogRefusal(site_.program, *client, session_);
  co_await net::YieldToEvents();
  client->Close();
}

Task<> BareAnswers::RefusePost(Client client) {
  SendNotFoundPage(*client);
  client->Finish(net::ActivityEnd::kRefused);
  try {
    co_await net::YieldToEvents();
  } catch (const net::HandlerEnded&) {
    // The request of a client that left at once is logged like any other.
  }
  LogRefusal(site_.program, *client, session_);
  client->Close();
}

}  // namespace ModWeb
