// Sending what a POP3 command is answered with, a stored message piece by piece.

#include <algorithm>
#include <utility>

#include "mail/mail_server.h"
#include "mail/pop3_replies.h"

#include "platform/system_message.h"

namespace ModMail {
namespace {

constexpr std::size_t kPieceBytes = 65536;

// The next bytes of the message; fewer than it still has only if it cannot be read.
std::string ReadPiece(StoredMessage& message, std::error_code& error) {
  std::string piece(std::min<std::uint64_t>(message.size, kPieceBytes), '\0');
  const std::size_t wanted = piece.size();
  piece.resize(message.file.Read(piece.data(), wanted, error));
  if (!error && piece.size() < wanted) error = std::make_error_code(std::errc::io_error);
  message.size -= piece.size();
  return piece;
}

}  // namespace

using net::Task;

// A message that fits one piece goes out in one send, and nobody sees it in parts.
Task<> MailServer::SendOutcome(Client client, Pop3Outcome outcome) {
  std::string text = std::move(outcome.text);
  if (outcome.message) {
    client->Expect(outcome.message->size);
    std::error_code error;
    const std::string piece = ReadPiece(*outcome.message, error);
    if (error) {
      client->SendData(text + Line(pop3::kUnreadable));
      co_return;
    }
    text += piece;
    if (outcome.message->size > 0) {
      client->SendData(std::exchange(text, {}));
      Task<> sending = SendRest(client, std::move(*outcome.message));
      co_await sending;
    }
    text += '\0';
  }
  client->SendData(text + outcome.rest);
}

// Meanwhile the client's next command stays with the client: its reply would get into the message.
Task<> MailServer::SendRest(Client client, StoredMessage message) {
  client->HoldReading(true);
  while (message.size > 0) {
    Task<> sent = client->Sent();
    co_await sent;
    std::error_code error;
    const std::string piece = ReadPiece(message, error);
    if (error) {
      // Whatever came now would be taken for the message.
      environment_.program.errors.LogError(platform::SystemMessage(error));
      client->Close();
      throw net::HandlerEnded();
    }
    client->SendData(piece);
    // A fast reader alone must not hold up the others.
    co_await net::YieldToEvents();
  }
  client->HoldReading(false);
}

}  // namespace ModMail
