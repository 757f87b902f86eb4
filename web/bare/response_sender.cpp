#include "web/bare/response_sender.h"

#include <array>
#include <chrono>
#include <optional>

#include "net/handler_scope.h"
#include "platform/system_message.h"
#include "text/code_page.h"
#include "web/not_found_page.h"

namespace ModWeb {
namespace {

using net::ActivityEnd;
using net::Task;
using platform::Departure;
using platform::File;
using Client = ResponseSender::Client;
using Failure = std::optional<std::string>;

constexpr std::size_t kPieceBytes = 10240;
constexpr int kYieldsPerPiece = 4;
constexpr std::chrono::milliseconds kPause{50};

Failure SendPiece(File& file, std::size_t size, const Client& client, Departure departure) {
  std::array<char, kPieceBytes> piece;
  std::error_code error;
  const std::size_t count = file.Read(piece.data(), size, error);
  if (error) return platform::SystemMessage(error);
  if (count < size) return "the file has become shorter";
  client->SendData({piece.data(), count}, departure);
  return std::nullopt;
}

// The pause keeps a large file from taking the line for itself.
Task<> Pace(Client client) {
  for (int i = 0; i < kYieldsPerPiece; ++i) co_await net::YieldToEvents();
  Task<> sent = client->Sent();
  co_await sent;
  net::Pause pause(kPause);
  co_await pause;
}

Task<Failure> SendFullPieces(File& file, std::uint64_t count, Client client) {
  for (std::uint64_t piece = 0; piece < count; ++piece) {
    if (Failure failure = SendPiece(file, kPieceBytes, client, Departure::kAtOnce))
      co_return failure;
    Task<> pacing = Pace(client);
    co_await pacing;
  }
  co_return std::nullopt;
}

// At the pace that the user wants instead.
Task<Failure> SendFullPieces(File& file, std::uint64_t count, Pacing pacing, Client client) {
  const std::uint64_t size = count * kPieceBytes;
  Task<Failure> sending = SendPaced(file, 0, size, pacing, client);
  Failure failure = co_await sending;
  std::error_code error;
  if (!failure) file.Seek(size, error);
  co_return error ? platform::SystemMessage(error) : failure;
}

Task<Failure> SendPieces(File file, std::optional<Pacing> pacing, Client client) {
  const std::uint64_t size = file.SizeWhenOpened();
  client->Expect(size);
  const std::uint64_t full = size / kPieceBytes;
  const auto rest = static_cast<std::size_t>(size % kPieceBytes);
  co_await net::YieldToEvents();
  Task<Failure> sending =
      pacing ? SendFullPieces(file, full, *pacing, client) : SendFullPieces(file, full, client);
  Failure failure = co_await sending;
  if (failure) co_return failure;
  // Without a rest there is no last piece, which counts as a failure once the others are out.
  if (rest == 0) co_return "the last piece of the file has no bytes";
  failure = SendPiece(file, rest, client, Departure::kWithEnd);
  if (failure) co_return failure;
  file.Close();
  co_await net::YieldToEvents();
  co_return std::nullopt;
}

// The file that the existence test finds. That test ignores a separator at the end of the path,
// opening the file does not.
File OpenFound(const files::ClientFiles& files, const std::string& path, Failure& failure) {
  File file = files.OpenIfExists(path);
  if (!file.IsOpen() || !path.ends_with('\\')) return file;
  std::error_code error;
  file = files.OpenToRead(path, error);
  if (error) failure = platform::SystemMessage(error);
  return file;
}

void EndResponse(const Client& client, const Failure& failure, ActivityEnd end,
                 const files::ErrorLog& errors) {
  if (failure) errors.LogError(*failure + "\r\n");
  client->Close(end);
}

// What counts as a failure may come after the last byte.
ActivityEnd EndOfFile(const net::Connection& client) {
  const net::Activity& activity = client.CurrentActivity();
  return activity.traffic.sent < activity.total ? ActivityEnd::kFailed : ActivityEnd::kComplete;
}

}  // namespace

Task<> ResponseSender::SendWebFile(std::string path, Client client) const {
  return SendFile(std::move(path), std::move(client), false);
}

Task<> ResponseSender::SendHtmlFile(std::string path, Client client) const {
  return SendFile(std::move(path), std::move(client), true);
}

Task<> ResponseSender::SendPage(File page, Client client, ActivityEnd ifNone) const {
  return SendOpened(std::move(page), std::move(client), true, ifNone);
}

Task<> ResponseSender::SendFile(std::string path, Client client, bool pageIfMissing) const {
  Failure failure;
  File file = OpenFound(files_, path, failure);
  if (failure) {
    EndResponse(client, failure, ActivityEnd::kFailed, errors_);
    co_return;
  }
  Task<> sending = SendOpened(std::move(file), client, pageIfMissing, ActivityEnd::kNotFound);
  co_await sending;
}

Task<> ResponseSender::SendOpened(File file, Client client, bool pageIfMissing,
                                  ActivityEnd ifMissing) const {
  Failure failure;
  ActivityEnd end = ifMissing;
  try {
    if (file.IsOpen()) {
      Task<Failure> sending = SendPieces(std::move(file), WantedPacing(), client);
      failure = co_await sending;
      end = EndOfFile(*client);
    } else if (pageIfMissing) {
      SendNotFoundPage(*client);
    }
  } catch (const net::HandlerEnded&) {
    // The client left early; the caller goes on as if it had stayed.
  }
  EndResponse(client, failure, end, errors_);
}

std::optional<Pacing> ResponseSender::WantedPacing() const {
  return answers_.speed ? std::optional(Pacing::For(answers_.speed)) : std::nullopt;
}

void SendNotFoundPage(net::Connection& client) {
  client.SendData(text::ToSystem(BuildNotFoundPage()), Departure::kWithEnd);
}

}  // namespace ModWeb
