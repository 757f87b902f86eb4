#include "platform/directory.h"

#include <windows.h>

#include <algorithm>
#include <limits>

#include "platform/file.h"
#include "platform/text_case.h"
#include "platform/windows/file_time.h"
#include "platform/windows/wide_text.h"

namespace platform {
namespace {

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

DirectoryEntry EntryOf(const WIN32_FIND_DATAW& found) {
  const auto has = [&](DWORD attribute) { return (found.dwFileAttributes & attribute) != 0; };
  return {NarrowText(found.cFileName), has(FILE_ATTRIBUTE_DIRECTORY), has(FILE_ATTRIBUTE_HIDDEN),
          has(FILE_ATTRIBUTE_REPARSE_POINT)};
}

}  // namespace

// `found` is the next entry to return.
struct DirectoryReader::Search {
  ~Search() {
    if (handle != INVALID_HANDLE_VALUE) FindClose(handle);
  }

  HANDLE handle = INVALID_HANDLE_VALUE;
  WIN32_FIND_DATAW found = {};
  bool more = true;
};

DirectoryReader::DirectoryReader(const std::filesystem::path& folder, std::error_code& error)
    : search_(std::make_unique<Search>()) {
  error.clear();
  // With an empty folder "*" would list the current directory.
  if (!folder.empty()) {
    search_->handle = FindFirstFileW((folder / L"*").c_str(), &search_->found);
    if (search_->handle != INVALID_HANDLE_VALUE) return;
    error = LastError();
  } else {
    error.assign(ERROR_PATH_NOT_FOUND, std::system_category());
  }
  search_->more = false;
}

DirectoryReader::~DirectoryReader() = default;
DirectoryReader::DirectoryReader(DirectoryReader&&) noexcept = default;

void DirectoryReader::Read(std::size_t most, std::vector<DirectoryEntry>& entries,
                           std::error_code& error) {
  error.clear();
  while (most > 0 && search_->more) {
    DirectoryEntry entry = EntryOf(search_->found);
    search_->more = FindNextFileW(search_->handle, &search_->found) != 0;
    if (!search_->more && GetLastError() != ERROR_NO_MORE_FILES) error = LastError();
    if (entry.name == "." || entry.name == "..") continue;
    entries.push_back(std::move(entry));
    --most;
  }
}

std::vector<DirectoryEntry> ListDirectory(const std::filesystem::path& folder,
                                          std::error_code& error) {
  std::vector<DirectoryEntry> found;
  DirectoryReader reader(folder, error);
  if (!error) reader.Read(std::numeric_limits<std::size_t>::max(), found, error);
  if (error) return {};
  std::vector<std::pair<std::string, DirectoryEntry>> entries;
  for (DirectoryEntry& entry : found) {
    std::string upper = UpperCase(entry.name);
    entries.emplace_back(std::move(upper), std::move(entry));
  }

  // Not every file system, nor every emulation of Windows, lists its names in order.
  std::sort(entries.begin(), entries.end(),
            [](const auto& left, const auto& right) { return left.first < right.first; });
  std::vector<DirectoryEntry> sorted;
  sorted.reserve(entries.size());
  for (auto& [upper, entry] : entries) sorted.push_back(std::move(entry));
  return sorted;
}

EntryFacts InspectEntry(const std::filesystem::path& path, std::error_code& error) {
  error.clear();
  WIN32_FILE_ATTRIBUTE_DATA facts = {};
  if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &facts) == 0) {
    error = LastError();
    return {};
  }
  const bool isFolder = (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  const std::uint64_t size =
      static_cast<std::uint64_t>(facts.nFileSizeHigh) << 32 | facts.nFileSizeLow;
  return {isFolder, isFolder ? 0 : size, TimeOf(facts.ftCreationTime),
          TimeOf(facts.ftLastWriteTime)};
}

struct OpenFolder::Handle {
  std::filesystem::path folder;
};

// Names are looked up from the root all the same: the system has no other way for these calls.
OpenFolder::OpenFolder(const std::filesystem::path& folder, std::error_code& error)
    : handle_(std::make_unique<Handle>(Handle{folder})) {
  error.clear();
}

OpenFolder::~OpenFolder() = default;
OpenFolder::OpenFolder(OpenFolder&&) noexcept = default;

EntryFacts OpenFolder::Inspect(std::string_view name, std::error_code& error) const {
  return InspectEntry(handle_->folder / WideText(name), error);
}

std::uint64_t OpenFolder::ReadableSize(std::string_view name, std::error_code& error) const {
  return File::ReadableSize(handle_->folder / WideText(name), error);
}

FileStamp StampOf(const std::filesystem::path& path, std::error_code& error) {
  error.clear();
  const HANDLE file =
      CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  BY_HANDLE_FILE_INFORMATION facts = {};
  const bool known = file != INVALID_HANDLE_VALUE && GetFileInformationByHandle(file, &facts) != 0;
  if (!known) error = LastError();
  if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
  const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
  return {join(facts.nFileIndexHigh, facts.nFileIndexLow),
          join(facts.nFileSizeHigh, facts.nFileSizeLow),
          static_cast<std::int64_t>(
              join(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime))};
}

}  // namespace platform
