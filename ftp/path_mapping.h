#pragma once

// Maps the names that a client sends to local paths, and tells which of them may be changed. All of
// it is text: paths are not normalised, ".." is left to the file system, and nothing here touches
// the disk.

#include <string>
#include <string_view>

namespace ModFtp {

/// Whether a name is relative to the root.
bool IsRootedName(std::string_view name);

/// `name` below the root, each "/" replaced by "\". After a root that ends in "\" there are two of
/// them; clients never see it, and the file system reads over it.
std::string PathFromRoot(std::string_view ftpRoot, std::string_view name);

/// `name`, unchanged, below the current directory.
std::string PathFromDirectory(std::string_view physicalDir, std::string_view name);

/// PathFromRoot for a rooted name, PathFromDirectory for any other.
std::string LocalPath(std::string_view ftpRoot, std::string_view physicalDir,
                      std::string_view name);

/// A local path as the client knows it, for the user: below the root, with "/", but none at either
/// end; "/" for the root itself.
std::string SeenPath(std::string_view ftpRoot, std::string_view path);

/// Where CWD leads: the local path, and the directory as the client sees it.
struct CurrentDirectory {
  std::string physicalDir;
  std::string ftpDir;
};

/// `slashedRoot` ends in a separator; an `argument` of "/" or nothing leads there. The directory
/// need not exist.
CurrentDirectory ChangedDirectory(std::string_view slashedRoot, std::string_view physicalDir,
                                  std::string_view argument);

/// Whether a file or folder may be changed: `path` contains the text `uploadDir` anywhere, in any
/// case, and is not equal to it. An empty `uploadDir` permits every path that is not empty.
bool IsInsideUploadDir(std::string_view path, std::string_view uploadDir);

}  // namespace ModFtp
