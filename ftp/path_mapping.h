#pragma once

// How names that a client sends become local paths, and which of them may be changed. All of it is
// text: nothing is tidied, ".." is left to the file system, and nothing here touches the disk.

#include <string>
#include <string_view>

namespace ModFtp {

/// Whether a name counts from the root.
bool IsRootedName(std::string_view name);

/// `name` below the root: its "/" become "\". A root that ends in "\" gives a doubled one, which
/// stays.
std::string PathFromRoot(std::string_view ftpRoot, std::string_view name);

/// `name`, unchanged, below the current directory.
std::string PathFromDirectory(std::string_view physicalDir, std::string_view name);

/// One or the other, by the name.
std::string LocalPath(std::string_view ftpRoot, std::string_view physicalDir,
                      std::string_view name);

/// Where CWD leads: the local directory, and the one that the client sees.
struct CurrentDirectory {
  std::string physicalDir;
  std::string ftpDir;
};

/// `slashedRoot` ends in a separator. An `argument` of "/" or nothing leads to it. Whether the
/// directory exists is not asked.
CurrentDirectory ChangedDirectory(std::string_view slashedRoot, std::string_view physicalDir,
                                  std::string_view argument);

/// Whether a file or folder may be changed: the upload directory's text stands somewhere in the
/// path's, whatever the case, and is not all of it. An empty one stands in every path.
bool IsInsideUploadDir(std::string_view path, std::string_view uploadDir);

}  // namespace ModFtp
