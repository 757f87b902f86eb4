#include "web/http/http_conversations.h"

#include <utility>

#include "net/handler_scope.h"

namespace ModWeb {

using net::ActivityEnd;
using net::Task;
using Progress = RequestReader::Progress;

namespace {

Task<> Ignore() { co_return; }

constexpr std::string_view kContinue = "HTTP/1.1 100 Continue\r\n\r\n";

}  // namespace

HttpConversations::HttpConversations(const WebSite& site) : site_(site), answers_(site_) {}

std::size_t HttpConversations::LongestBody() const {
  return static_cast<std::size_t>(site_.options.answers.bodyLimit) << 20;
}

// A slot has one connection after another, perhaps at the same address.
std::shared_ptr<HttpConversations::Conversation> HttpConversations::ConversationOf(
    int slot, const Client& client) {
  auto& conversation = conversations_.at(static_cast<std::size_t>(slot));
  if (!conversation || conversation->of.lock() != client) {
    conversation = std::make_shared<Conversation>(client, LongestBody());
  }
  return conversation;
}

Task<> HttpConversations::OnArrival(int slot, Client client) {
  const std::shared_ptr<Conversation> conversation = ConversationOf(slot, client);
  conversation->unread += client->GetData();
  return conversation->isAnswering ? Ignore() : Go(conversation, std::move(client));
}

Task<> HttpConversations::Go(std::shared_ptr<Conversation> conversation, Client client) {
  Conversation& own = *conversation;
  while (!own.unread.empty()) {
    std::string_view bytes = std::string_view(own.unread).substr(own.taken);
    const Progress progress = own.reader.Read(bytes);
    own.taken = own.unread.size() - bytes.size();
    if (bytes.empty()) own.ForgetTaken();
    if (progress == Progress::kIncomplete) {
      if (own.reader.TakeWantsContinue()) client->SendData(kContinue);
      co_return;
    }
    own.isAnswering = true;
    client->HoldReading(true);
    HttpResponse response;
    WriteOptions options;
    if (progress == Progress::kRefused) {
      client->Begin({.what = "HTTP"});
      response = Refused(own.reader.Refusal());
    } else {
      options = OptionsFor(own.reader.Request());
      Task<HttpResponse> answering = answers_.Answer(std::move(own.reader.Request()), client);
      response = co_await answering;
    }
    Task<bool> sending = Send(std::move(response), options, client);
    const bool goesOn = co_await sending;
    if (!goesOn) co_return;
    own.reader = RequestReader(LongestBody());
    // However many requests have come at once, others get their turn between two.
    if (!own.unread.empty()) co_await net::YieldToEvents();
    own.isAnswering = false;
    client->HoldReading(false);
  }
}

WriteOptions HttpConversations::OptionsFor(const HttpRequest& request) const {
  return {.headOnly = request.method == "HEAD",
          .keepsAlive = request.keepsAlive,
          .pacing = Pacing::For(site_.options.answers.speed)};
}

// Whether the connection goes on; if not, it has been closed.
Task<bool> HttpConversations::Send(HttpResponse response, WriteOptions options, Client client) {
  const ActivityEnd end = response.end;
  Task<std::optional<std::string>> writing = WriteResponse(std::move(response), options, client);
  const std::optional<std::string> failure = co_await writing;
  if (failure) site_.program.errors.LogError(*failure);
  if (failure || !options.keepsAlive) {
    client->Close(failure ? ActivityEnd::kFailed : end);
    co_return false;
  }
  client->Finish(end);
  co_return true;
}

}  // namespace ModWeb
