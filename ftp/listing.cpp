#include "ftp/listing.h"

#include "ftp/file_info.h"
#include "ftp/folder_walk.h"
#include "ftp/listing_lines.h"
#include "net/handler_scope.h"
#include "net/turn.h"
#include "text/code_page.h"

namespace ModFtp {

using net::Task;

Task<std::optional<std::string>> BuildListing(const files::ClientFiles& files, std::string folder,
                                              std::string lastCommand,
                                              std::shared_ptr<net::Connection> data,
                                              std::shared_ptr<MemoryShare> memory) {
  Task<std::optional<SortedEntries>> reading = ReadSorted(files, folder, memory);
  std::optional<SortedEntries> entries = co_await reading;
  if (!entries) co_return std::nullopt;
  // Reserved at once: to grow by copying would cost as much as making many of the lines.
  constexpr std::size_t kUsualLine = 72;
  std::string listing;
  if (!memory->Take(entries->Count() * kUsualLine)) co_return std::nullopt;
  listing.reserve(entries->Count() * kUsualLine);
  std::error_code error;
  const files::ClientFolder opened = files.OpenFolder(folder, error);
  if (error) co_return std::nullopt;
  net::Turn turn;
  while (const std::optional<platform::DirectoryEntry> entry = entries->Next()) {
    if (entry->isHidden || !IsListed(entry->name, lastCommand)) continue;
    if (entry->isLink && files.LeadsOut(folder + entry->name)) continue;
    std::optional<FileInfo> info;
    if (entry->isFolder) {
      Task<std::optional<FileInfo>> inspecting =
          GetFolderInfo(files, folder + entry->name, entry->isLink, memory);
      info = co_await inspecting;
    } else if (entry->isLink) {
      info = GetFileInfo(files, folder + entry->name);
    } else {
      info = GetFileInfo(opened.folder, entry->name);
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
