#include "web/http/folder_list.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "net/handler_scope.h"
#include "net/turn.h"
#include "platform/text_case.h"
#include "web/http/first_entries.h"
#include "web/http/folder_page.h"
#include "web/http/list_order.h"

namespace ModWeb {
namespace {

using net::Task;
using platform::DirectoryEntry;

constexpr std::size_t kMostShown = 5000;
constexpr std::size_t kMostRead = 200000;  // of a larger folder the rest is not looked at
constexpr std::size_t kBatch = 200;        // read in well below a millisecond

bool IsShown(const DirectoryEntry& entry, const std::vector<std::string>& leftOut) {
  if (entry.isHidden || entry.name.starts_with('.')) return false;
  return std::none_of(leftOut.begin(), leftOut.end(), [&](const std::string& name) {
    return platform::EqualIgnoringCase(name, entry.name);
  });
}

ListedEntry Listed(DirectoryEntry entry) {
  std::string key = platform::UpperCase(entry.name);
  return {std::move(key), std::move(entry.name), entry.isFolder, entry.isLink};
}

// What is to be shown of a folder.
struct Content {
  std::vector<ListedEntry> entries;
  bool isCut = false;
};

// Reads the names.
Task<std::optional<Content>> ReadNames(const files::ClientFiles& files, std::string folder,
                                       std::vector<std::string> leftOut) {
  std::error_code error;
  platform::DirectoryReader reader = files.ReadFolder(folder, error);
  FirstEntries first(kMostShown);
  std::vector<DirectoryEntry> batch;
  std::size_t read = 0;
  net::Turn turn;
  while (!error && read < kMostRead) {
    batch.clear();
    reader.Read(kBatch, batch, error);
    if (batch.empty()) break;
    read += batch.size();
    for (DirectoryEntry& entry : batch) {
      if (IsShown(entry, leftOut)) first.Add(Listed(std::move(entry)));
    }
    if (!turn.IsOver()) continue;
    co_await net::YieldToEvents();
    turn.Renew();
  }
  if (error) co_return std::nullopt;
  std::vector<ListedEntry> entries = first.Take();
  co_return Content{std::move(entries), first.IsCut() || read >= kMostRead};
}

// False if visitors cannot get the entry: it has gone, or leads out of where they are confined.
bool Inspect(const files::ClientFiles& files, const std::string& folder, ListedEntry& entry) {
  const std::string path = folder + entry.name;
  if (entry.isLink && files.LeadsOut(path)) return false;
  std::error_code error;
  const platform::EntryFacts facts = files.Inspect(path, error);
  entry.size = facts.size;
  entry.modified = facts.modified;
  return !error;
}

// Adds sizes and dates.
Task<std::vector<ListedEntry>> InspectAll(const files::ClientFiles& files, std::string folder,
                                          std::vector<ListedEntry> found) {
  std::vector<ListedEntry> entries;
  entries.reserve(found.size());
  net::Turn turn;
  for (ListedEntry& entry : found) {
    if (Inspect(files, folder, entry)) entries.push_back(std::move(entry));
    if (!turn.IsOver()) continue;
    co_await net::YieldToEvents();
    turn.Renew();
  }
  co_return std::move(entries);
}

Task<std::string> WritePage(FolderPageFrame frame, std::vector<ListedEntry> entries) {
  frame.folders = static_cast<std::size_t>(
      std::count_if(entries.begin(), entries.end(), std::mem_fn(&ListedEntry::isFolder)));
  frame.files = entries.size() - frame.folders;
  std::sort(entries.begin(), entries.end(), frame.order);
  FolderPage page(frame);
  net::Turn turn;
  for (const ListedEntry& entry : entries) {
    page.Add(entry);
    if (!turn.IsOver()) continue;
    co_await net::YieldToEvents();
    turn.Renew();
  }
  co_return page.Finish();
}

}  // namespace

Task<std::optional<std::string>> BuildFolderList(const files::ClientFiles& files,
                                                 FolderListRequest request) {
  Task<std::optional<Content>> reading = ReadNames(files, request.folder, request.leftOut);
  std::optional<Content> content = co_await reading;
  if (!content) co_return std::nullopt;
  Task<std::vector<ListedEntry>> inspecting =
      InspectAll(files, request.folder, std::move(content->entries));
  std::vector<ListedEntry> entries = co_await inspecting;
  FolderPageFrame frame = {request.urlPath, ParseOrder(request.query), request.hasStyle};
  if (content->isCut) frame.cutAt = kMostShown;
  Task<std::string> writing = WritePage(std::move(frame), std::move(entries));
  std::string page = co_await writing;
  co_return std::move(page);
}

}  // namespace ModWeb
