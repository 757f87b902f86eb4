#include "platform/confined_entry.h"

#include <windows.h>

#include <string>

#include "platform/native_path.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::intptr_t kNone = -1;

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

std::error_code Missing() { return {ERROR_FILE_NOT_FOUND, std::system_category()}; }

HANDLE Native(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

// While it is open, neither the entry nor a folder above it can be renamed, moved or removed: the
// handle reads data, which counts, and does not share deletion.
std::intptr_t OpenToHold(const fs::path& path) {
  const HANDLE handle =
      CreateFileW(path.c_str(), FILE_READ_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  return handle == INVALID_HANDLE_VALUE ? kNone : reinterpret_cast<std::intptr_t>(handle);
}

fs::path FinalPath(std::intptr_t handle) {
  const DWORD size = GetFinalPathNameByHandleW(Native(handle), nullptr, 0, 0);
  std::wstring path(size, L'\0');
  path.resize(GetFinalPathNameByHandleW(Native(handle), path.data(), size, 0));
  // Without the prefix that turns off the system's rules for names, unless the path is too long.
  return NativePath(PathText(path));
}

// The system ignores dots and blanks at the end of a name, and takes what follows a colon for a
// part of a file.
bool IsUsableName(std::string_view name) {
  return name.find(':') == std::string_view::npos &&
         name.find_last_not_of(". ") != std::string_view::npos;
}

}  // namespace

ConfinedEntry::~ConfinedEntry() {
  if (handle_ != kNone) CloseHandle(Native(handle_));
}

ConfinedEntry ConfinedEntry::Find(std::string_view root, std::string_view name, Links links,
                                  std::error_code& error) {
  error.clear();
  const fs::path rootPath = NativePath(root);
  ConfinedEntry found;
  found.handle_ =
      name.find(':') != std::string_view::npos
          ? kNone
          : OpenToHold(name.empty() ? rootPath
                                    : NativePath(std::string(root) + "\\" + std::string(name)));
  if (found.handle_ == kNone) {
    error = name.find(':') != std::string_view::npos ? Missing() : LastError();
    return found;
  }
  found.path_ = found.realPath_ = FinalPath(found.handle_);
  if (links == Links::kMayLeadOut || name.empty()) return found;
  const ConfinedEntry rootEntry = Find(root, {}, links, error);
  if (!error && !IsAtOrBelow(found.realPath_, rootEntry.RealPath())) error = Missing();
  return found;
}

ConfinedEntry ConfinedEntry::FindPlace(std::string_view root, std::string_view name,
                                       std::error_code& error) {
  const std::size_t separator = name.find_last_of('\\');
  const bool isInRoot = separator == std::string_view::npos;
  const std::string_view last = isInRoot ? name : name.substr(separator + 1);
  if (!IsUsableName(last)) {
    error = Missing();
    return {};
  }
  ConfinedEntry found = Find(root, isInRoot ? std::string_view() : name.substr(0, separator),
                             Links::kStayInside, error);
  if (error) return found;
  found.path_ = NativePath(PathText(found.realPath_) + "\\" + std::string(last));
  found.realPath_ = found.path_;
  return found;
}

}  // namespace platform
