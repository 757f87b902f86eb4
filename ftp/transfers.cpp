#include "ftp/transfers.h"

#include <algorithm>
#include <limits>

#include "ftp/command_text.h"
#include "ftp/exceptions_as_failures.h"
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

// Chunks that are handed to the system together; other clients get their turns in between.
constexpr std::int32_t kChunksPerTurn = 4096;

// The same of a listing. What a peer does not take of it at once is copied.
constexpr std::size_t kListingPiece = std::size_t{256} << 10;

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
  std::optional<std::string> listing = co_await building;
  // Other events ran meanwhile: the slot may have another connection by now.
  if (data->IsClosed()) co_return false;
  if (!listing || listing->empty()) {
    connections_.CloseDataSocket(slot, listing ? ActivityEnd::kComplete : EndOfUnread(*data));
    co_return listing.has_value();
  }
  memory->KeepOnly(listing->size());
  session.listingMemory = memory;
  data->StartHandler(SendListing(slot, data, std::move(*listing)));
  co_return true;
}

// Like a download a handler of its data connection, with which it ends.
Task<> Transfers::SendListing(int slot, Client data, std::string listing) {
  for (std::size_t at = 0; at < listing.size(); at += kListingPiece) {
    if (at > 0) co_await net::YieldToEvents();
    const std::string_view piece = std::string_view(listing).substr(at, kListingPiece);
    const bool isLast = at + piece.size() == listing.size();
    data->SendData(piece, isLast ? platform::Departure::kWithEnd : platform::Departure::kAtOnce);
    Task<> sent = data->Sent();
    co_await sent;
  }
  connections_.CloseDataSocket(slot, ActivityEnd::kComplete);
}

Task<bool> Transfers::OpenRetrieve(int slot) {
  Task<> connected = connections_.AwaitDataConnection(slot);
  co_await connected;
  reply_(slot, replies::kSending);
  FtpSession& session = sessions_[slot];
  const Client data = connections_.Current(slot);
  const std::shared_ptr<Transfer> transfer = session.transfer;
  ShowTransfer(*data, Kind::kDownload, session.transferPath);
  if (!OpenFile(session)) {
    data->Finish(EndOfUnread(*data));
    co_return false;
  }
  const std::uint64_t size = session.retrHandle.SizeWhenOpened();
  session.chunksSent = 0;
  session.fullChunks = static_cast<std::int32_t>(size / kChunkBytes);
  session.tailBytes = static_cast<std::int16_t>(size % kChunkBytes);
  data->Expect(size);
  data->StartHandler(SendChunks(slot, data));
  co_return !transfer->failed;
}

// A file whose size does not fit the protocol's numbers counts as missing.
bool Transfers::OpenFile(FtpSession& session) const {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::int32_t>::max();
  std::error_code error;
  session.retrHandle = files_.OpenToRead(session.transferPath, error);
  return !error && session.retrHandle.SizeWhenOpened() <= kLargest;
}

// The end of the connection follows the last piece, and leaves with it.
Task<> Transfers::SendChunks(int slot, Client data) {
  FtpSession& session = sessions_[slot];
  std::uint64_t offset = 0;
  while (session.chunksSent < session.fullChunks || session.tailBytes > 0) {
    const std::int32_t chunks = std::min(session.fullChunks - session.chunksSent, kChunksPerTurn);
    const std::int32_t size = chunks > 0 ? chunks * kChunkBytes : session.tailBytes;
    session.chunksSent += chunks;
    if (chunks == 0) session.tailBytes = 0;
    const bool isLast = session.chunksSent == session.fullChunks && session.tailBytes == 0;
    Task<bool> sending =
        data->SendFile(session.retrHandle, offset, static_cast<std::uint64_t>(size),
                       isLast ? platform::Departure::kWithEnd : platform::Departure::kAtOnce);
    const bool isSent = co_await sending;
    if (!isSent) {
      FailTransfer(slot);
      co_return;
    }
    offset += static_cast<std::uint64_t>(size);
    if (!isLast) co_await net::YieldToEvents();
  }
  connections_.CloseDataSocket(slot, ActivityEnd::kComplete);
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
  const std::string_view bytes = data->ViewData();
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
void Transfers::WriteUploadData(int slot, std::string_view bytes) {
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
