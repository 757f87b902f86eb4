#include "ftp/upload_rule.h"

#include "ftp/path_mapping.h"

namespace ModFtp {

bool UploadRule::MayChange(const std::string& path) const {
  if (!files_.AreConfined()) return IsInsideUploadDir(path, options_.uploadDir);
  // A link can be changed itself, or what it leads to: both must be open.
  const std::filesystem::path target = files_.RealTarget(path);
  return IsPlaceOpen(files_.RealPlace(path)) && (target.empty() || IsPlaceOpen(target));
}

bool UploadRule::MayMove(const std::string& from) const {
  return !files_.AreConfined() || MayChange(from);
}

bool UploadRule::IsPlaceOpen(const std::filesystem::path& place) const {
  if (place.empty() || options_.uploadDir.empty()) return false;
  const std::filesystem::path folder = platform::RealPathOf(options_.uploadDir);
  return platform::IsAtOrBelow(place, folder) && !platform::IsAtOrBelow(folder, place) &&
         protection_.MayChange(place);
}

}  // namespace ModFtp
