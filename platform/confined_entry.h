#pragma once

// An entry below a root, under a name that a stranger gave. It is found so that neither the name
// nor a link leads out of the root, and then held: whatever is renamed, moved or replaced by a link
// afterwards, Path() still names the entry that was found.
//
// Names are looked up exactly first, then ignoring case. What would lead out counts as missing.

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace platform {

/// Whether a link may lead out of the root.
enum class Links { kStayInside, kMayLeadOut };

class ConfinedEntry {
 public:
  /// An existing file or folder. `root` and `name` are path texts; `name` has no "." and "..", and
  /// is empty for the root itself.
  static ConfinedEntry Find(std::string_view root, std::string_view name, Links links,
                            std::error_code& error);

  /// The place of an entry that may be missing: its folder is found and held, and an entry there
  /// that is a link is the link itself. `name` as above, but not empty.
  static ConfinedEntry FindPlace(std::string_view root, std::string_view name,
                                 std::error_code& error);

  ConfinedEntry() = default;
  ConfinedEntry(ConfinedEntry&& other) noexcept { *this = std::move(other); }
  ConfinedEntry& operator=(ConfinedEntry&& other) noexcept;
  ~ConfinedEntry();

  /// To be used while this object lives.
  const std::filesystem::path& Path() const { return path_; }

  /// Where the entry is, without links; for comparisons.
  const std::filesystem::path& RealPath() const { return realPath_; }

 private:
  static constexpr std::intptr_t kNone = -1;

  std::intptr_t handle_ = kNone;  // of the entry, or of its folder
  std::filesystem::path path_;
  std::filesystem::path realPath_;
};

/// Where a folder is, without links; where it would be, if it is missing. Empty on failure.
std::filesystem::path RealPathOf(std::string_view pathText);

/// Whether `entry` is `folder` or somewhere below it, by real paths. Ignores case, so that it errs
/// on the safe side where the system does not.
bool IsAtOrBelow(const std::filesystem::path& entry, const std::filesystem::path& folder);

}  // namespace platform
