#include "ftp/path_mapping.h"

#include "platform/text_case.h"
#include "text/path_text.h"
#include "text/strings.h"

namespace ModFtp {

using ModCommon::AddSlash;
using text::ReplaceAll;

bool IsRootedName(std::string_view name) { return name.starts_with('/'); }

std::string PathFromRoot(std::string_view ftpRoot, std::string_view name) {
  return std::string(ftpRoot) + ReplaceAll(name, "/", "\\");
}

std::string PathFromDirectory(std::string_view physicalDir, std::string_view name) {
  return AddSlash(physicalDir) + std::string(name);
}

std::string LocalPath(std::string_view ftpRoot, std::string_view physicalDir,
                      std::string_view name) {
  return IsRootedName(name) ? PathFromRoot(ftpRoot, name) : PathFromDirectory(physicalDir, name);
}

std::string SeenPath(std::string_view ftpRoot, std::string_view path) {
  constexpr std::string_view kSeparators = "\\/";
  const std::string_view root = ftpRoot.substr(0, ftpRoot.find_last_not_of(kSeparators) + 1);
  const std::string_view below = path.starts_with(root) ? path.substr(root.size()) : path;
  const bool isBelow = below.empty() || kSeparators.find(below.front()) != std::string_view::npos;
  std::string seen;
  for (const char c : isBelow ? below : path) {
    const bool isSeparator = kSeparators.find(c) != std::string_view::npos;
    if (!isSeparator) seen += c;
    if (isSeparator && !seen.empty() && seen.back() != '/') seen += '/';
  }
  if (seen.ends_with('/')) seen.pop_back();
  return seen.empty() ? "/" : seen;
}

CurrentDirectory ChangedDirectory(std::string_view slashedRoot, std::string_view physicalDir,
                                  std::string_view argument) {
  std::string changed(slashedRoot);
  if (IsRootedName(argument)) {
    changed += argument.substr(1);
  } else if (!argument.empty()) {
    changed = PathFromDirectory(physicalDir, argument);
  }
  changed = ReplaceAll(changed, "/", "\\");
  const std::string seen = AddSlash(ReplaceAll(changed, slashedRoot, "/"));
  return {changed, ReplaceAll(seen, "\\", "/")};
}

bool IsInsideUploadDir(std::string_view path, std::string_view uploadDir) {
  const std::string upperPath = platform::UpperCase(path);
  const std::string upperDir = platform::UpperCase(uploadDir);
  return upperPath.find(upperDir) != std::string::npos && upperPath != upperDir;
}

}  // namespace ModFtp
