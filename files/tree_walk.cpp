#include "files/tree_walk.h"

#include <utility>

#include "platform/native_path.h"

namespace files {
namespace {

namespace fs = std::filesystem;
using platform::NativePath;

constexpr std::size_t kDeepest = 64;
constexpr std::size_t kPiece = 64;  // entries

std::string WithoutSlash(std::string path) {
  while (path.ends_with('\\')) path.pop_back();
  return path;
}

// Empty for a root, or a drive.
std::string NameOf(const std::string& path) {
  const std::string name = path.substr(path.find_last_of('\\') + 1);
  return name.find(':') == std::string::npos ? name : std::string();
}

}  // namespace

struct TreeWalk::Folder {
  std::string path;
  std::string name;
  platform::DirectoryReader reader;
  std::vector<platform::DirectoryEntry> entries = {};  // read and not returned yet
  std::error_code error = {};                          // that ended the reading

  bool HasMore() {
    if (entries.empty()) reader.Read(kPiece, entries, error);
    return !entries.empty();
  }
};

TreeWalk::TreeWalk(std::vector<std::string> chosen)
    : chosen_(std::make_move_iterator(chosen.begin()), std::make_move_iterator(chosen.end())) {}

TreeWalk::~TreeWalk() = default;

std::optional<TreeWalk::Item> TreeWalk::Next() {
  while (!way_.empty()) {
    Folder& folder = *way_.back();
    if (folder.HasMore()) return NextIn(folder);
    const Item unreadable{Kind::kUnreadable, folder.path, folder.name, 0, folder.error};
    way_.pop_back();
    if (unreadable.error) return unreadable;
  }
  if (chosen_.empty()) return std::nullopt;
  return NextChosen();
}

TreeWalk::Item TreeWalk::NextIn(Folder& folder) {
  const platform::DirectoryEntry entry = std::move(folder.entries.back());
  folder.entries.pop_back();
  const std::string inFolder = "\\" + entry.name;
  return Inspect({Kind::kFile, folder.path + inFolder, folder.name + inFolder}, entry.isLink);
}

TreeWalk::Item TreeWalk::NextChosen() {
  const std::string path = WithoutSlash(std::move(chosen_.front()));
  chosen_.pop_front();
  Item item{Kind::kFile, path, NameOf(path)};
  if (!item.name.empty()) return Inspect(std::move(item), false);
  item.kind = Kind::kUnreadable;
  item.name = path;
  item.error = std::make_error_code(std::errc::invalid_argument);
  return item;
}

TreeWalk::Item TreeWalk::Inspect(Item item, bool isLink) {
  const platform::EntryFacts facts = platform::InspectEntry(NativePath(item.path), item.error);
  item.size = facts.size;
  if (isLink && (facts.isFolder || item.error || !IsInTree(item.path))) {
    item.kind = Kind::kLink;
  } else if (item.error) {
    item.kind = Kind::kUnreadable;
  } else if (facts.isFolder) {
    return Enter(std::move(item));
  }
  return item;
}

TreeWalk::Item TreeWalk::Enter(Item item) {
  item.kind = Kind::kTooDeep;
  if (way_.size() == kDeepest) return item;
  platform::DirectoryReader reader(NativePath(item.path), item.error);
  item.kind = item.error ? Kind::kUnreadable : Kind::kFolder;
  if (item.error) return item;
  way_.push_back(std::make_unique<Folder>(Folder{item.path, item.name, std::move(reader)}));
  return item;
}

bool TreeWalk::IsInTree(const std::string& path) const {
  return IsAtOrIn(path, way_.front()->path);
}

void TreeWalk::LeaveOut() { way_.pop_back(); }

bool IsAtOrIn(const std::string& path, const std::string& folder) {
  std::error_code error;
  fs::path above = fs::weakly_canonical(NativePath(path), error);
  const fs::path limit = NativePath(folder);
  if (error) above = NativePath(path);
  while (true) {
    if (fs::equivalent(above, limit, error)) return true;
    if (above == above.parent_path()) return false;
    above = above.parent_path();
  }
}

}  // namespace files
