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

RequestReader::Progress HttpConversations::Conversation::Read() {
  std::string_view bytes = std::string_view(unread).substr(taken);
  const Progress progress = reader.Read(bytes);
  taken = unread.size() - bytes.size();
  if (bytes.empty()) {
    unread.clear();
    taken = 0;
  }
  return progress;
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
    const Progress progress = own.Read();
    if (progress == Progress::kIncomplete) {
      if (own.reader.TakeWantsContinue()) client->SendData(kContinue);
      co_return;
    }
    own.isAnswering = true;
    client->HoldReading(true);
    const bool isRequest = progress == Progress::kComplete;
    const auto options = isRequest ? OptionsFor(own.reader.Request()) : WriteOptions();
    Task<HttpResponse> answering = isRequest
                                       ? answers_.Answer(std::move(own.reader.Request()), client)
                                       : HttpAnswers::Refuse(own.reader.Refusal(), *client);
    HttpResponse response = co_await answering;
    const ActivityEnd end = response.end;
    Task<std::optional<std::string>> writing = WriteResponse(std::move(response), options, client);
    const std::optional<std::string> failure = co_await writing;
    if (failure) site_.program.errors.LogError(*failure);
    if (failure || !options.keepsAlive) {
      co_return client->Close(failure ? ActivityEnd::kFailed : end);
    }
    client->Finish(end);
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

}  // namespace ModWeb
