#pragma once

// The files of a service, under names that clients give. Usually a name means what the file system
// takes it for, and ".." leads anywhere. Where clients are confined, a name is resolved below the
// service's root first: "." and "..", either separator, case and links; what would lead out is
// missing. What was resolved cannot be exchanged before it is used (platform/confined_entry.h).
//
// Paths are path texts that begin with the root. Calls block, and failures are error codes, as in
// files/files.h.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "files/files.h"
#include "platform/confined_entry.h"

namespace files {

/// Whether clients are confined to the roots of the services.
struct Confinement {
  bool isOn = false;
  platform::Links links = platform::Links::kStayInside;  // for reading; changes always stay inside
};

/// A folder that stays open, and where it was found if clients are confined.
struct ClientFolder {
  platform::ConfinedEntry place;
  platform::OpenFolder folder;
};

class ClientFiles {
 public:
  /// Both may change, and must outlive this object.
  ClientFiles(const std::string& root, const Confinement& confinement)
      : root_(root), confinement_(confinement) {}

  platform::File OpenToRead(std::string_view path, std::error_code& error) const;

  /// Created if missing, not truncated.
  platform::File OpenToUpdate(std::string_view path, std::error_code& error) const;

  /// A file that exists by the definition of FileExists; else the result is not open.
  platform::File OpenIfExists(std::string_view path) const;
  bool FileExists(std::string_view path) const { return OpenIfExists(path).IsOpen(); }
  bool FolderExists(std::string_view path) const;

  platform::EntryFacts Inspect(std::string_view path, std::error_code& error) const;
  platform::DirectoryReader ReadFolder(std::string_view path, std::error_code& error) const;
  ClientFolder OpenFolder(std::string_view path, std::error_code& error) const;

  std::error_code CreateFolder(std::string_view path) const;
  std::error_code RemoveFile(std::string_view path) const;
  std::error_code RemoveFolder(std::string_view path) const;
  std::error_code Rename(std::string_view from, std::string_view to) const;

  /// Where a change at `path` would really happen; empty if clients are not confined, or if nothing
  /// can be changed there.
  std::filesystem::path RealPlace(std::string_view path) const;

  /// Whether clients are confined, and a link is all there is for them.
  bool LeadsOut(std::string_view path) const;

  /// Where an existing entry really is, links resolved; empty if there is none, or likewise.
  std::filesystem::path RealTarget(std::string_view path) const;

  bool AreConfined() const { return confinement_.isOn; }

  /// `path` without "." and "..", which do not lead above the root; unchanged if clients are not
  /// confined.
  std::string Settled(std::string path) const;

 private:
  platform::ConfinedEntry Find(std::string_view path, std::error_code& error) const;
  platform::ConfinedEntry FindPlace(std::string_view path, std::error_code& error) const;

  const std::string& root_;
  const Confinement& confinement_;
};

/// What comes below `root` in `path`, without "." and ".." and with single "\"; none if `path` does
/// not begin with the root, or leads above it.
std::optional<std::string> NameBelow(std::string_view root, std::string_view path);

}  // namespace files
