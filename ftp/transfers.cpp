// Sending and receiving files. One piece of a file is under way per connection, whatever its size:
// the next is read when the system has taken the one before.

#include <algorithm>
#include <array>
#include <limits>

#include "files/files.h"
#include "ftp/command_text.h"
#include "ftp/file_info.h"
#include "ftp/ftp_server.h"
#include "ftp/path_mapping.h"
#include "ftp/replies.h"
#include "ftp/trapped.h"

namespace ModFtp {
namespace {

using net::Task;
using platform::File;

constexpr std::int32_t kChunkBytes = 4096;

// Chunks that the system takes at once are sent in a row, a fraction of a millisecond's worth: a
// turn of the loop costs as much as one of them.
constexpr int kChunksPerTurn = 64;

// What is shown of a file that is transferred: there is no room for the folders.
std::string NameIn(const std::string& path) { return path.substr(path.rfind('\\') + 1); }

}  // namespace

Task<bool> FtpServer::OpenRetrieve(int slot) {
  Task<> connected = AwaitDataConnection(slot);
  co_await connected;
  Reply(slot, replies::kSending);
  FtpSession& session = Session(slot);
  session.fullChunks = session.chunksSent = 0;
  const std::optional<FileInfo> info = GetFileInfo(session.transferPath);
  if (!info) co_return false;
  session.fullChunks = info->size / kChunkBytes;
  session.tailBytes = static_cast<std::int16_t>(info->size % kChunkBytes);
  const Client data = FtpSvrDataSock(slot).Current();
  data->Doing("RETR " + NameIn(session.transferPath));
  data->Expect(static_cast<std::uint64_t>(info->size));
  if (!SendNextChunk(slot)) co_return false;
  data->StartHandler(PaceSending(slot, data));
  co_return true;
}

// False if the file cannot be opened or has become shorter.
bool FtpServer::SendNextChunk(int slot) {
  FtpSession& session = Session(slot);
  if (!session.retrHandle.IsOpen()) {
    std::error_code error;
    session.retrHandle = files::OpenFile(session.transferPath, File::Mode::kRead, error);
    if (error) return false;
  }
  if (session.chunksSent < session.fullChunks) {
    ++session.chunksSent;
    return SendPiece(slot, kChunkBytes);
  }
  if (session.tailBytes < 1) {
    CloseDataSocket(slot);
    return true;
  }
  const bool sent = SendPiece(slot, static_cast<std::size_t>(session.tailBytes));
  session.retrHandle.Close();
  session.chunksSent = session.fullChunks = 0;
  session.closeAfterSend = true;
  return sent;
}

bool FtpServer::SendPiece(int slot, std::size_t size) {
  std::array<char, kChunkBytes> piece;
  std::error_code error;
  if (Session(slot).retrHandle.Read(piece.data(), size, error) < size) return false;
  FtpSvrDataSock(slot).SendData({piece.data(), size});
  return true;
}

// Raises the send-complete events of one data connection, to which it belongs: it ends with it.
Task<> FtpServer::PaceSending(int slot, Client data) {
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

void FtpServer::OnFtpDataSendComplete(int slot) {
  if (Session(slot).closeAfterSend) {
    CloseDataSocket(slot);
  } else if (!SendNextChunk(slot)) {
    FailTransfer(slot);
  }
}

Task<bool> FtpServer::OpenStore(int slot, std::string text) {
  Task<> connected = AwaitDataConnection(slot);
  co_await connected;
  const std::optional<std::string> name = CutArgument(text, kAfterFourLetters);
  if (!name) co_return false;
  FtpSession& session = Session(slot);
  session.uploadPath = PathFromDirectory(session.physicalDir, *name);
  if (!MayChange(session.uploadPath)) co_return false;
  Reply(slot, replies::kReceiving);
  FtpSvrDataSock(slot).Current()->Doing("STOR " + NameIn(session.uploadPath));
  FtpSvrDataSock(slot).Current()->HoldReading(false);
  co_return true;
}

Task<> FtpServer::OnFtpDataArrival(int slot, Client data) {
  const std::string bytes = data->GetData();
  // The count stops at its largest value; the upload goes on.
  const std::int64_t count = state_.uploadByteCount + static_cast<std::int64_t>(bytes.size());
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  state_.uploadByteCount = static_cast<std::int32_t>(std::min(count, kMost));
  WriteUploadData(slot, bytes);
  co_return;
}

// Opened at the first byte and not emptied: the tail of a longer file stays, and an upload of
// nothing leaves nothing.
void FtpServer::WriteUploadData(int slot, const std::string& bytes) {
  FtpSession& session = Session(slot);
  const bool written = Succeeds(Errors(), [&] {
    std::error_code error;
    if (!session.storHandle.IsOpen()) {
      session.storHandle = files::OpenFile(session.uploadPath, File::Mode::kUpdate, error);
    }
    if (!error) session.storHandle.Write(bytes, error);
    return !error;
  });
  if (!written) FailTransfer(slot);
}

void FtpServer::FailTransfer(int slot) {
  if (const auto& transfer = Session(slot).transfer) transfer->failed = true;
  CloseDataSocket(slot);
}

}  // namespace ModFtp
