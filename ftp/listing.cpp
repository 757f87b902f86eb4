// LIST: built whole, then sent in one piece.

#include "ftp/file_info.h"
#include "ftp/folder_walk.h"
#include "ftp/ftp_server.h"
#include "ftp/replies.h"
#include "ftp/trapped.h"
#include "text/code_page.h"
#include "text/path_text.h"

namespace ModFtp {

using net::Task;

Task<bool> FtpServer::SendFtpListing(int slot) {
  Task<> connected = AwaitDataConnection(slot);
  co_await connected;
  const Client data = FtpSvrDataSock(slot).Current();
  Reply(slot, replies::kSending);
  FtpSession& session = Session(slot);
  const auto memory = std::make_shared<MemoryShare>(listingMemory_);
  Task<std::optional<std::string>> building =
      Trapped(Errors(), BuildListing(ModCommon::AddSlash(session.physicalDir), data, memory));
  const std::optional<std::string> listing = co_await building;
  // Others had their turn meanwhile; what the slot carries now may be another's.
  if (data->IsClosed()) co_return false;
  if (!listing || listing->empty()) {
    CloseDataSocket(slot);
    co_return listing.has_value();
  }
  memory->KeepOnly(listing->size());
  session.listingMemory = memory;
  session.closeAfterSend = true;
  data->SendData(*listing);
  data->StartHandler(PaceSending(slot, data));
  co_return true;
}

// None if something cannot be looked at: one such entry spoils the whole listing; and if all
// listings together would take too much memory. `folder` ends in a separator.
Task<std::optional<std::string>> FtpServer::BuildListing(std::string folder, Client data,
                                                         std::shared_ptr<MemoryShare> memory) {
  Task<std::optional<SortedEntries>> reading = ReadSorted(folder, memory);
  std::optional<SortedEntries> entries = co_await reading;
  if (!entries) co_return std::nullopt;
  // Of a large folder in one piece of memory: to grow by copying costs as much as many a line.
  constexpr std::size_t kUsualLine = 72;
  std::string listing;
  if (!memory->Take(entries->Count() * kUsualLine)) co_return std::nullopt;
  listing.reserve(entries->Count() * kUsualLine);
  Turn turn;
  while (const std::optional<platform::DirectoryEntry> entry = entries->Next()) {
    if (entry->isHidden || !IsListed(entry->name, state_.lastCommand)) continue;
    const std::string path = folder + entry->name;
    std::optional<FileInfo> info;
    if (entry->isFolder) {
      Task<std::optional<FileInfo>> inspecting = GetFolderInfo(path, entry->isLink, memory);
      info = co_await inspecting;
    } else {
      info = GetFileInfo(path);
    }
    if (!info) co_return std::nullopt;
    listing += text::ToSystem(ListingLine(entry->name, entry->isFolder, *info));
    if (!turn.IsOver()) continue;
    co_await net::YieldToEvents();
    turn.Renew();
    if (data->IsClosed()) co_return std::nullopt;
  }
  co_return std::move(listing);
}

}  // namespace ModFtp
