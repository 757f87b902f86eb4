#pragma once

// Walks through files and folders that a user chose, one entry at a time, folders before their
// content. Nothing is read ahead but a few entries of each folder on the way, so trees of any size
// can be walked in turns.
//
// What the user chose may be a link. Of the links inside, only those to files of the same tree are
// followed: others could publish what nobody chose, or lead around in circles.

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "platform/directory.h"

namespace files {

class TreeWalk {
 public:
  enum class Kind { kFile, kFolder, kUnreadable, kLink, kTooDeep };

  struct Item {
    Kind kind;
    std::string path;            // a path text
    std::string name;            // its path from the folder of what was chosen: "pics\\a.jpg"
    std::uint64_t size = 0;      // of a file
    std::error_code error = {};  // why it is unreadable
  };

  /// `chosen`: path texts.
  explicit TreeWalk(std::vector<std::string> chosen);
  ~TreeWalk();

  /// The next entry; none after the last.
  std::optional<Item> Next();

  /// Leaves out the content of the folder that Next returned last.
  void LeaveOut();

 private:
  struct Folder;

  Item NextIn(Folder& folder);
  Item NextChosen();
  Item Enter(Item item);
  Item Inspect(Item item, bool isLink);
  bool IsInTree(const std::string& path) const;

  std::deque<std::string> chosen_;
  std::vector<std::unique_ptr<Folder>> way_;  // the folders being read, each in the one before
};

/// Whether `path` is `folder` or in it, whatever links lead there. Both are path texts; of `path`
/// the end may be missing yet.
bool IsAtOrIn(const std::string& path, const std::string& folder);

}  // namespace files
