#include "mail/pop3_transfer.h"

#include <algorithm>
#include <utility>

#include "mail/pop3_replies.h"
#include "mail/reply_line.h"
#include "mail/shown_subject.h"
#include "net/handler_scope.h"
#include "platform/system_message.h"

namespace ModMail {
namespace {

using net::Task;
using Client = std::shared_ptr<net::Connection>;

constexpr std::size_t kPieceBytes = 65536;

// The next bytes of the message. Fewer than are left is an error.
std::string ReadPiece(StoredMessage& message, std::error_code& error) {
  std::string piece(std::min<std::uint64_t>(message.size, kPieceBytes), '\0');
  const std::size_t wanted = piece.size();
  piece.resize(message.file.Read(piece.data(), wanted, error));
  if (!error && piece.size() < wanted) error = std::make_error_code(std::errc::io_error);
  message.size -= piece.size();
  return piece;
}

// Holds reading meanwhile, or the reply to the client's next command would get into the message.
Task<> SendRest(Client client, StoredMessage message, const files::ErrorLog& errors) {
  client->HoldReading(true);
  while (message.size > 0) {
    Task<> sent = client->Sent();
    co_await sent;
    std::error_code error;
    const std::string piece = ReadPiece(message, error);
    if (error) {
      // The client would take any reply for a part of the message.
      errors.LogError(platform::SystemMessage(error));
      client->Close(net::ActivityEnd::kFailed);
      throw net::HandlerEnded();
    }
    client->SendData(piece);
    // A fast reader must not hold up the others.
    co_await net::YieldToEvents();
  }
  client->HoldReading(false);
}

}  // namespace

// A message that fits one piece goes out in one send.
Task<> SendOutcome(Client client, Pop3Outcome outcome, const files::ErrorLog& errors) {
  std::string text = std::move(outcome.text);
  if (outcome.message) {
    client->Expect(outcome.message->size);
    std::error_code error;
    const std::string piece = ReadPiece(*outcome.message, error);
    if (error) {
      client->Finish(net::ActivityEnd::kFailed);
      client->SendData(text + ReplyLine(pop3::kUnreadable));
      co_return;
    }
    if (client->IsObserved()) client->Describe(ShownSubject(piece));
    text += piece;
    if (outcome.message->size > 0) {
      client->SendData(std::exchange(text, {}));
      Task<> sending = SendRest(client, std::move(*outcome.message), errors);
      co_await sending;
    }
    if (!outcome.endsOnce) text += '\0';
  }
  client->SendData(text + outcome.rest);
}

}  // namespace ModMail
