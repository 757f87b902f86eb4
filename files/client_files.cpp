#include "files/client_files.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "files/missing.h"
#include "platform/entry.h"
#include "platform/native_path.h"

namespace files {
namespace {

namespace fs = std::filesystem;
using platform::ConfinedEntry;
using platform::File;

constexpr std::string_view kSeparators = "\\/";

std::error_code Missing() { return std::make_error_code(std::errc::no_such_file_or_directory); }

std::string_view WithoutEnd(std::string_view path) {
  return path.substr(0, path.find_last_not_of(kSeparators) + 1);
}

// The components of a name without "." and "..". `isClamped`: whether what leads above the
// beginning ends there; else it is none.
std::optional<std::string> Resolve(std::string_view name, bool isClamped) {
  std::vector<std::string_view> steps;
  while (!name.empty()) {
    const std::string_view step = name.substr(0, name.find_first_of(kSeparators));
    name.remove_prefix(std::min(step.size() + 1, name.size()));
    if (step.empty() || step == ".") continue;
    if (step != "..") {
      steps.push_back(step);
    } else if (!steps.empty()) {
      steps.pop_back();
    } else if (!isClamped) {
      return std::nullopt;
    }
  }
  std::string resolved;
  for (const std::string_view step : steps) {
    if (!resolved.empty()) resolved += '\\';
    resolved += step;
  }
  return resolved;
}

std::optional<std::string_view> PartBelow(std::string_view root, std::string_view path) {
  const std::string_view begin = WithoutEnd(root);
  if (!path.starts_with(begin)) return std::nullopt;
  const std::string_view rest = path.substr(begin.size());
  const bool isBelow = rest.empty() || kSeparators.find(rest.front()) != std::string_view::npos;
  return isBelow ? std::optional(rest) : std::nullopt;
}

// What an action on a native path found below the root yields, or an empty result.
template <class Action>
auto On(const ConfinedEntry& entry, const std::error_code& error, Action action)
    -> decltype(action(fs::path())) {
  if (error) return {};
  return action(entry.Path());
}

}  // namespace

std::optional<std::string> NameBelow(std::string_view root, std::string_view path) {
  const auto part = PartBelow(root, path);
  return part ? Resolve(*part, false) : std::nullopt;
}

ConfinedEntry ClientFiles::Find(std::string_view path, std::error_code& error) const {
  if (const auto name = NameBelow(root_, path)) {
    return ConfinedEntry::Find(root_, *name, confinement_.links, error);
  }
  error = Missing();
  return {};
}

ConfinedEntry ClientFiles::FindPlace(std::string_view path, std::error_code& error) const {
  const auto name = NameBelow(root_, path);
  if (name && !name->empty()) return ConfinedEntry::FindPlace(root_, *name, error);
  error = Missing();
  return {};
}

File ClientFiles::OpenToRead(std::string_view path, std::error_code& error) const {
  if (!confinement_.isOn) return OpenFile(path, File::Mode::kRead, error);
  const ConfinedEntry entry = Find(path, error);
  if (error) return {};
  return File::Open(entry.Path(), File::Mode::kRead, error);
}

// Exclusively if it is new: then a link that appears in its place is not followed.
File ClientFiles::OpenToUpdate(std::string_view path, std::error_code& error) const {
  if (!confinement_.isOn) return OpenFile(path, File::Mode::kUpdate, error);
  const auto name = NameBelow(root_, path);
  if (!name) {
    error = Missing();
    return {};
  }
  const ConfinedEntry existing =
      ConfinedEntry::Find(root_, *name, platform::Links::kStayInside, error);
  if (!error) return File::Open(existing.Path(), File::Mode::kUpdate, error);
  if (!IsMissing(error)) return {};
  const ConfinedEntry place = FindPlace(path, error);
  if (error) return {};
  return File::Open(place.Path(), File::Mode::kCreate, error);
}

File ClientFiles::OpenIfExists(std::string_view path) const {
  if (!confinement_.isOn) return files::OpenIfExists(path);
  std::error_code error;
  return OpenToRead(path, error);
}

bool ClientFiles::FolderExists(std::string_view path) const {
  if (!confinement_.isOn) return files::FolderExists(path);
  std::error_code error;
  const ConfinedEntry entry = Find(path, error);
  return !error && fs::is_directory(entry.Path(), error);
}

platform::EntryFacts ClientFiles::Inspect(std::string_view path, std::error_code& error) const {
  if (!confinement_.isOn) return InspectPath(path, error);
  const ConfinedEntry entry = Find(path, error);
  if (error) return {};
  return platform::InspectEntry(entry.Path(), error);
}

platform::DirectoryReader ClientFiles::ReadFolder(std::string_view path,
                                                  std::error_code& error) const {
  if (!confinement_.isOn) return files::ReadFolder(path, error);
  const ConfinedEntry entry = Find(path, error);
  std::error_code ofReading;
  platform::DirectoryReader reader(error ? fs::path() : entry.Path(), ofReading);
  if (!error) error = ofReading;
  return reader;
}

ClientFolder ClientFiles::OpenFolder(std::string_view path, std::error_code& error) const {
  if (!confinement_.isOn) return {{}, files::OpenFolder(path, error)};
  ConfinedEntry place = Find(path, error);
  std::error_code ofOpening;
  platform::OpenFolder folder(error ? fs::path() : place.Path(), ofOpening);
  if (!error) error = ofOpening;
  return {std::move(place), std::move(folder)};
}

std::error_code ClientFiles::CreateFolder(std::string_view path) const {
  if (!confinement_.isOn) return files::CreateFolder(path);
  std::error_code error;
  const ConfinedEntry place = FindPlace(path, error);
  if (!error && !fs::create_directory(place.Path(), error) && !error) {
    error = std::make_error_code(std::errc::file_exists);
  }
  return error;
}

std::error_code ClientFiles::RemoveFile(std::string_view path) const {
  if (!confinement_.isOn) return files::RemoveFile(path);
  std::error_code error;
  const ConfinedEntry place = FindPlace(path, error);
  if (error) return error;
  if (fs::is_directory(fs::symlink_status(place.Path(), error))) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  return platform::RemoveEntry(place.Path(), error) || error ? error : Missing();
}

std::error_code ClientFiles::RemoveFolder(std::string_view path) const {
  if (!confinement_.isOn) return files::RemoveFolder(path);
  std::error_code error;
  const ConfinedEntry place = FindPlace(path, error);
  if (error) return error;
  if (!fs::is_directory(fs::symlink_status(place.Path(), error))) {
    return error ? error : std::make_error_code(std::errc::not_a_directory);
  }
  fs::remove(place.Path(), error);
  return error;
}

std::error_code ClientFiles::Rename(std::string_view from, std::string_view to) const {
  if (!confinement_.isOn) return RenamePath(from, to);
  std::error_code error;
  const ConfinedEntry source = FindPlace(from, error);
  if (error) return error;
  const ConfinedEntry target = FindPlace(to, error);
  if (error) return error;
  // In the folder that was found, but under the name as written.
  const std::string name = NameBelow(root_, to).value_or("");
  const fs::path written = platform::NativePath(name.substr(name.find_last_of('\\') + 1));
  platform::MoveEntry(source.Path(), target.Path().parent_path() / written, error);
  return error;
}

fs::path ClientFiles::RealPlace(std::string_view path) const {
  if (!confinement_.isOn) return {};
  std::error_code error;
  const ConfinedEntry place = FindPlace(path, error);
  return error ? fs::path() : place.RealPath();
}

bool ClientFiles::LeadsOut(std::string_view path) const {
  if (!confinement_.isOn) return false;
  std::error_code error;
  Find(path, error);
  return IsMissing(error);
}

fs::path ClientFiles::RealTarget(std::string_view path) const {
  const auto name = NameBelow(root_, path);
  if (!confinement_.isOn || !name) return {};
  std::error_code error;
  const ConfinedEntry entry =
      ConfinedEntry::Find(root_, *name, platform::Links::kStayInside, error);
  return error ? fs::path() : entry.RealPath();
}

std::string ClientFiles::Settled(std::string path) const {
  if (!confinement_.isOn) return path;
  const std::string_view begin = WithoutEnd(root_);
  const auto part = PartBelow(root_, path);
  const std::string name = part ? Resolve(*part, true).value_or("") : "";
  return std::string(begin) + "\\" + name;
}

}  // namespace files
