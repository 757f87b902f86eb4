#pragma once

// The conversations of the clients with a server that answers by HTTP: requests are read in
// whatever pieces they arrive, and answered one after another on the same connection as long as the
// client wants. While an answer goes out, nothing further is read, so a client that sends ahead
// costs one arrival.

#include <array>
#include <memory>
#include <string>

#include "net/connection_slots.h"
#include "web/http/http_answers.h"
#include "web/http/request_reader.h"
#include "web/http/response_writer.h"

namespace ModWeb {

class HttpConversations {
 public:
  using Client = std::shared_ptr<net::Connection>;

  /// Everything in `site` must outlive this object, which must outlive its tasks.
  explicit HttpConversations(const WebSite& site);

  /// Takes what has arrived, and answers what is complete.
  net::Task<> OnArrival(int slot, Client client);

 private:
  // What one connection has said so far.
  struct Conversation {
    Conversation(const Client& client, std::size_t longestBody) : of(client), reader(longestBody) {}

    RequestReader::Progress Read();

    std::weak_ptr<net::Connection> of;
    RequestReader reader;
    std::string unread;
    std::size_t taken = 0;  // of it, by the requests so far
    bool isAnswering = false;
  };

  std::shared_ptr<Conversation> ConversationOf(int slot, const Client& client);
  net::Task<> Go(std::shared_ptr<Conversation> conversation, Client client);
  WriteOptions OptionsFor(const HttpRequest& request) const;
  std::size_t LongestBody() const;

  const WebSite site_;
  HttpAnswers answers_;
  std::array<std::shared_ptr<Conversation>, net::ConnectionSlots::kLastSlot + 1> conversations_;
};

}  // namespace ModWeb
