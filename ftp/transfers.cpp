#include "ftp/transfers.h"

#include <algorithm>
#include <array>
#include <limits>

#include "ftp/command_text.h"
#include "ftp/exceptions_as_failures.h"
#include "ftp/file_info.h"
#include "ftp/listing.h"
#include "ftp/path_mapping.h"
#include "ftp/replies.h"
#include "net/handler_scope.h"
#include "text/path_text.h"

namespace ModFtp {
namespace {

using net::ActivityEnd;
using net::Task;
using Kind = net::Activity::Kind;

constexpr std::int32_t kChunkBytes = 4096;

// Chunks that the system takes at once are sent in a row, for a fraction of a millisecond: a turn
// of the loop costs as much as one of them.
constexpr int kChunksPerTurn = 64;

}  // namespace

Task<bool> Transfers::SendFtpListing(int slot) {
  Task<> connected = connections_.AwaitDataConnection(slot);
  co_await connected;
  const Client data = connections_.Current(slot);
  reply_(slot, replies::kSending);
  FtpSession& session = sessions_[slot];
  ShowTransfer(*data, Kind::kBrowse, session.physicalDir);
  const auto memory = std::make_shared<MemoryShare>(memory_);
  Task<std::optional<std::string>> building =
      TrapErrors(errors_, BuildListing(files_, ModCommon::AddSlash(session.physicalDir),
                                       sessions_.StateOf(slot).lastCommand, data, memory));
  const std::optional<std::string> listing = co_await building;
  // Other events ran meanwhile: the slot may have another connection by now.
  if (data->IsClosed()) co_return false;
  if (!listing || listing->empty()) {
    connections_.CloseDataSocket(slot, listing ? ActivityEnd::kComplete : EndOfUnread(*data));
    co_return listing.has_value();
  }
  memory->KeepOnly(listing->size());
  session.listingMemory = memory;
  session.closeAfterSend = true;
  data->SendData(*listing);
  data->StartHandler(PaceSending(slot, data));
  co_return true;
}

Task<bool> Transfers::OpenRetrieve(int slot) {
  Task<> connected = connections_.AwaitDataConnection(slot);
  co_await connected;
  reply_(slot, replies::kSending);
  FtpSession& session = sessions_[slot];
  session.fullChunks = session.chunksSent = 0;
  const Client data = connections_.Current(slot);
  ShowTransfer(*data, Kind::kDownload, session.transferPath);
  const std::optional<FileInfo> info = GetFileInfo(files_, session.transferPath);
  if (!info) {
    data->Finish(EndOfUnread(*data));
    co_return false;
  }
  session.fullChunks = info->size / kChunkBytes;
  session.tailBytes = static_cast<std::int16_t>(info->size % kChunkBytes);
  data->Expect(static_cast<std::uint64_t>(info->size));
  if (!SendNextChunk(slot)) co_return false;
  data->StartHandler(PaceSending(slot, data));
  co_return true;
}

void Transfers::ShowTransfer(net::Connection& data, Kind kind, const std::string& path) const {
  std::string seen = SeenPath(sessions_.shared.ftpRoot, path);
  if (kind == Kind::kBrowse && seen != "/") seen.insert(0, "/");
  data.Begin(
      {.kind = kind, .what = std::move(seen), .path = data.IsObserved() ? path : std::string()});
}

// Why something could not be read. Looked for only if anybody wants to know.
ActivityEnd Transfers::EndOfUnread(const net::Connection& data) const {
  if (!data.IsObserved()) return ActivityEnd::kFailed;
  const std::string& path = data.CurrentActivity().path;
  const bool exists = files_.FileExists(path) || files_.FolderExists(path);
  return exists ? ActivityEnd::kFailed : ActivityEnd::kNotFound;
}

// False if the file cannot be opened or has shrunk.
bool Transfers::SendNextChunk(int slot) {
  FtpSession& session = sessions_[slot];
  if (!session.retrHandle.IsOpen()) {
    std::error_code error;
    session.retrHandle = files_.OpenToRead(session.transferPath, error);
    if (error) return false;
  }
  if (session.chunksSent < session.fullChunks) {
    ++session.chunksSent;
    return SendPiece(slot, kChunkBytes);
  }
  if (session.tailBytes < 1) {
    connections_.CloseDataSocket(slot, ActivityEnd::kComplete);
    return true;
  }
  const bool sent = SendPiece(slot, static_cast<std::size_t>(session.tailBytes));
  session.retrHandle.Close();
  session.chunksSent = session.fullChunks = 0;
  session.closeAfterSend = true;
  return sent;
}

bool Transfers::SendPiece(int slot, std::size_t size) {
  std::array<char, kChunkBytes> piece;
  std::error_code error;
  if (sessions_[slot].retrHandle.Read(piece.data(), size, error) < size) return false;
  connections_.SendData(slot, {piece.data(), size});
  return true;
}

// Raises the send-complete events of `data`. It is a handler of that connection and ends with it.
Task<> Transfers::PaceSending(int slot, Client data) {
  int inThisTurn = 1;
  while (!data->IsClosed()) {
    if (data->HasUnsentBytes()) {
      Task<> taken = data->Sent();
      co_await taken;
      inThisTurn = 0;
    } else if (++inThisTurn > kChunksPerTurn) {
      co_await net::YieldToEvents();
      inThisTurn = 0;
    }
    OnFtpDataSendComplete(slot);
  }
}

void Transfers::OnFtpDataSendComplete(int slot) {
  if (sessions_[slot].closeAfterSend) {
    connections_.CloseDataSocket(slot, ActivityEnd::kComplete);
  } else if (!SendNextChunk(slot)) {
    FailTransfer(slot);
  }
}

Task<bool> Transfers::OpenStore(int slot, std::string text) {
  Task<> connected = connections_.AwaitDataConnection(slot);
  co_await connected;
  const std::optional<std::string> name = CutArgument(text, kAfterFourLetters);
  if (!name) co_return false;
  FtpSession& session = sessions_[slot];
  session.uploadPath = PathFromDirectory(session.physicalDir, *name);
  const Client data = connections_.Current(slot);
  ShowTransfer(*data, Kind::kUpload, session.uploadPath);
  if (!rule_.MayChange(session.uploadPath)) {
    data->Finish(ActivityEnd::kRefused);
    co_return false;
  }
  reply_(slot, replies::kReceiving);
  data->HoldReading(false);
  co_return true;
}

Task<> Transfers::OnFtpDataArrival(int slot, Client data) {
  const std::string bytes = data->GetData();
  // The count saturates; the upload goes on.
  const std::int64_t count =
      sessions_.StateOf(slot).uploadByteCount + static_cast<std::int64_t>(bytes.size());
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  sessions_.StateOf(slot).uploadByteCount = static_cast<std::int32_t>(std::min(count, kMost));
  WriteUploadData(slot, bytes);
  co_return;
}

// Opens the file at the first byte and does not truncate it: a longer file keeps its tail, and an
// empty upload creates nothing.
void Transfers::WriteUploadData(int slot, const std::string& bytes) {
  FtpSession& session = sessions_[slot];
  const bool written = Succeeds(errors_, [&] {
    std::error_code error;
    if (!session.storHandle.IsOpen()) {
      session.storHandle = files_.OpenToUpdate(session.uploadPath, error);
    }
    if (!error) session.storHandle.Write(bytes, error);
    return !error;
  });
  if (!written) FailTransfer(slot);
}

void Transfers::FailTransfer(int slot) {
  if (const auto& transfer = sessions_[slot].transfer) transfer->failed = true;
  connections_.CloseDataSocket(slot, ActivityEnd::kFailed);
}

}  // namespace ModFtp
