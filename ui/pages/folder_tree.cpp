#include "ui/pages/folder_tree.h"

#include <utility>

#include "files/files.h"
#include "platform/native_path.h"
#include "platform/shell.h"
#include "platform/text_case.h"
#include "text/path_text.h"
#include "ui/controls/art.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kPictureSize = 16;
const wxSize kLeastSize(100, 70);  // GTK warns about scroll bars that have no room

// Entries per turn, and the pause in milliseconds in which everything else runs.
constexpr std::size_t kPiece = 500;
constexpr int kPause = 10;

enum Picture { kDriver, kClosed, kOpen, kFile };

// The state of an entry in the tree.
class Entry : public wxTreeItemData {
 public:
  explicit Entry(bool isFolder) : isFolder_(isFolder) {}
  bool IsUnread() const { return isFolder_ && !read_; }
  void SetRead() { read_ = true; }

 private:
  bool isFolder_;
  bool read_ = false;
};

}  // namespace

FolderTree::FolderTree(wxWindow* parent)
    : wxTreeCtrl(parent, wxID_ANY, wxDefaultPosition, parent->FromDIP(kLeastSize),
                 wxTR_HAS_BUTTONS | wxTR_LINES_AT_ROOT | wxTR_SINGLE | wxTR_NO_LINES |
                     wxTR_FULL_ROW_HIGHLIGHT | wxBORDER_THEME) {
  Named(this, "tvWebDir");
  wxVector<wxBitmapBundle> pictures;
  for (const char* name : {"driver", "closed", "open", "file"}) {
    pictures.push_back(Art(name, kPictureSize));
  }
  SetImages(pictures);
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Work(); });
  Bind(wxEVT_TREE_ITEM_EXPANDING, &FolderTree::OnExpanding, this);
  Bind(wxEVT_TREE_ITEM_ACTIVATED, &FolderTree::OnActivated, this);
}

FolderTree::~FolderTree() = default;

void FolderTree::ShowFolder(const std::string& folder) {
  folder_ = ModCommon::AddSlash(folder);
  readings_.clear();
  DeleteAllItems();
  const wxTreeItemId top =
      AddRoot(Shown(platform::PathTextForUser(folder)), kDriver, kDriver, new Entry(false));
  BeginReading(top, folder_);
}

void FolderTree::BeginReading(wxTreeItemId parent, const std::string& folder) {
  std::error_code error;
  platform::DirectoryReader reader = files::ReadFolder(folder, error);
  if (error) return;
  readings_.push_back(
      std::make_unique<Reading>(Reading{parent, std::move(reader), false, false, {}}));
  if (!timer_.IsRunning()) timer_.Start(kPause);
}

void FolderTree::Work() {
  if (readings_.empty()) return timer_.Stop();
  Reading& reading = *readings_.front();
  if (reading.read) {
    ShowMore(reading);
  } else {
    ReadMore(reading);
  }
  if (reading.read && reading.entries.empty()) readings_.pop_front();
}

void FolderTree::ReadMore(Reading& reading) {
  std::vector<platform::DirectoryEntry> piece;
  std::error_code error;
  reading.reader.Read(kPiece, piece, error);
  reading.read = error || piece.empty();
  for (platform::DirectoryEntry& entry : piece) {
    if (entry.isHidden) continue;
    reading.entries.emplace(SortKey(!entry.isFolder, platform::UpperCase(entry.name)),
                            std::move(entry.name));
  }
}

void FolderTree::ShowMore(Reading& reading) {
  Freeze();
  for (std::size_t i = 0; i < kPiece && !reading.entries.empty(); ++i) {
    const auto first = reading.entries.begin();
    Append(reading.parent, first->second, !first->first.first);
    reading.entries.erase(first);
  }
  Thaw();
  // Expanded as soon as there is something to see; if the user collapses it later, it stays so.
  if (!reading.expanded) Expand(reading.parent);
  reading.expanded = true;
}

void FolderTree::Append(wxTreeItemId parent, const std::string& name, bool isFolder) {
  const int picture = isFolder ? kClosed : kFile;
  const wxTreeItemId item = AppendItem(parent, Shown(name), picture, picture, new Entry(isFolder));
  if (!isFolder) return;
  SetItemImage(item, kOpen, wxTreeItemIcon_Expanded);
  SetItemImage(item, kOpen, wxTreeItemIcon_SelectedExpanded);
  SetItemHasChildren(item);
}

std::string FolderTree::PathOf(wxTreeItemId item) const {
  if (item == GetRootItem()) return folder_;
  return ModCommon::AddSlash(PathOf(GetItemParent(item))) + Typed(GetItemText(item));
}

std::string FolderTree::SelectedPath() const {
  const wxTreeItemId item = GetSelection();
  return item.IsOk() ? PathOf(item) : std::string();
}

void FolderTree::OnExpanding(wxTreeEvent& event) {
  const wxTreeItemId item = event.GetItem();
  auto* entry = static_cast<Entry*>(GetItemData(item));
  if (entry == nullptr || !entry->IsUnread()) return;
  entry->SetRead();
  SetItemHasChildren(item, false);
  BeginReading(item, PathOf(item));
}

void FolderTree::OnActivated(wxTreeEvent& event) {
  platform::OpenWithShell(platform::PathTextForUser(PathOf(event.GetItem())));
}

}  // namespace ui
