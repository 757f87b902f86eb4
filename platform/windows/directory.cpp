#include "platform/directory.h"

#include <windows.h>

#include <algorithm>

#include "platform/text_case.h"
#include "platform/windows/wide_text.h"

namespace platform {
namespace {

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

// 100-nanosecond steps since 1601.
std::chrono::system_clock::time_point TimeOf(const FILETIME& time) {
  constexpr std::int64_t kUnixEpoch = 116444736000000000;
  const std::int64_t steps =
      (static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime) - kUnixEpoch;
  return std::chrono::system_clock::from_time_t(static_cast<std::time_t>(steps / 10000000));
}

}  // namespace

std::vector<DirectoryEntry> ListDirectory(const std::filesystem::path& folder,
                                          std::error_code& error) {
  error.clear();
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW((folder / L"*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    error = LastError();
    return {};
  }
  std::vector<std::pair<std::string, DirectoryEntry>> entries;
  do {
    const std::string name = NarrowText(found.cFileName);
    if (name == "." || name == "..") continue;
    const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool isHidden = (found.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
    entries.push_back({UpperCase(name), {name, isFolder, isHidden}});
  } while (FindNextFileW(search, &found) != 0);
  FindClose(search);

  // Not every file system (nor every emulation of one) hands its names out in order.
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
  return {isFolder, isFolder ? 0 : size, TimeOf(facts.ftCreationTime)};
}

}  // namespace platform
