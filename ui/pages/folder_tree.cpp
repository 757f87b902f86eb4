#include "ui/pages/folder_tree.h"

#include <utility>

#include "files/files.h"
#include "platform/native_path.h"
#include "platform/shell.h"
#include "platform/text_case.h"
#include "text/path_text.h"
#include "text/printable_text.h"
#include "ui/controls/art.h"
#include "ui/controls/copying.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kPictureSize = 16;
const wxSize kLeastSize(100, 70);  // GTK warns about scroll bars that have no room

// Entries per turn, and the pause in milliseconds in which everything else runs.
constexpr std::size_t kPiece = 500;
constexpr int kPause = 10;

enum Picture { kDriver, kClosed, kOpen, kFile, kUpload };

// The state of an entry in the tree. It has the name only if another label is shown: there may be
// hundreds of thousands of entries.
class Entry : public wxTreeItemData {
 public:
  Entry(const std::string& name, bool isFolder, const wxString& label) : isFolder_(isFolder) {
    if (label != Shown(name)) name_ = std::make_unique<const std::string>(name);
  }
  std::string Name(const wxString& label) const { return name_ ? *name_ : Typed(label); }
  bool IsFolder() const { return isFolder_; }
  bool IsUnread() const { return isFolder_ && !read_; }
  void SetRead() { read_ = true; }

 private:
  std::unique_ptr<const std::string> name_;
  const bool isFolder_;
  bool read_ = false;
};

const Entry& EntryOf(const wxTreeCtrl& tree, wxTreeItemId item) {
  return *static_cast<const Entry*>(tree.GetItemData(item));
}

std::string NameOf(const wxTreeCtrl& tree, wxTreeItemId item) {
  return EntryOf(tree, item).Name(tree.GetItemText(item));
}

std::string Joined(const std::string& folder, const std::string& name) {
  return folder.ends_with('\\') ? folder + name : folder + "\\" + name;
}

// The same for all spellings of a folder that the FTP server takes for the same.
std::string Comparable(std::string folder) {
  while (folder.ends_with('\\')) folder.pop_back();
  return platform::UpperCase(folder);
}

}  // namespace

FolderTree::FolderTree(wxWindow* parent, const char* name, Opens opens)
    : wxTreeCtrl(parent, wxID_ANY, wxDefaultPosition, parent->FromDIP(kLeastSize),
                 wxTR_HAS_BUTTONS | wxTR_LINES_AT_ROOT | wxTR_SINGLE | wxTR_NO_LINES |
                     wxTR_FULL_ROW_HIGHLIGHT | wxBORDER_THEME),
      opens_(opens) {
  Named(this, name);
  SetMinSize(FromDIP(kLeastSize));
  wxVector<wxBitmapBundle> pictures;
  for (const char* picture : {"driver", "closed", "open", "file", "upload"}) {
    pictures.push_back(Art(picture, kPictureSize));
  }
  SetImages(pictures);
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Work(); });
  Bind(wxEVT_TREE_ITEM_EXPANDING, &FolderTree::OnExpanding, this);
  Bind(wxEVT_TREE_ITEM_COLLAPSED,
       [this](wxTreeEvent& event) { expanded_.erase(PathOf(event.GetItem())); });
  Bind(wxEVT_TREE_ITEM_ACTIVATED, &FolderTree::OnActivated, this);
  LetCopy(*this, [this] { return platform::PathTextForUser(SelectedPath()); });
}

FolderTree::~FolderTree() = default;

void FolderTree::ShowFolder(const std::string& folder) {
  const std::string shown = std::exchange(folder_, ModCommon::AddSlash(folder));
  if (shown != folder_) expanded_.clear();
  const wxTreeItemId selection = GetSelection();
  if (selection.IsOk()) selected_ = PathOf(selection);
  readings_.clear();
  DeleteAllItems();
  const wxString label = LabelOf(platform::PathTextForUser(folder), folder_);
  const wxTreeItemId top = AddRoot(label, kDriver, kDriver, new Entry(folder, false, label));
  if (selected_ == folder_) SelectItem(top);
  BeginReading(top, folder_);
}

void FolderTree::ShowAgain(const std::string& expanded) {
  expanded_.insert(expanded);
  ShowSame();
}

void FolderTree::ShowSame() {
  const wxTreeItemId top = GetRootItem();
  if (top.IsOk()) ShowFolder(NameOf(*this, top));
}

void FolderTree::MarkUploads(const std::string& folder) {
  const std::string comparable = Comparable(folder);
  if (std::exchange(uploads_, comparable) != comparable) ShowSame();
}

bool FolderTree::IsUploads(const std::string& path) const {
  return !uploads_.empty() && Comparable(path) == uploads_;
}

wxString FolderTree::LabelOf(const std::string& name, const std::string& path) const {
  return Shown(text::Printable(name) + (IsUploads(path) ? "（上传目录）" : ""));
}

void FolderTree::BeginReading(wxTreeItemId parent, const std::string& folder) {
  std::error_code error;
  platform::DirectoryReader reader = files::ReadFolder(folder, error);
  if (error) return;
  readings_.push_back(
      std::make_unique<Reading>(Reading{parent, folder, std::move(reader), false, false, {}}));
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
    Append(reading, first->second, !first->first.first);
    reading.entries.erase(first);
  }
  Thaw();
  // Expanded as soon as there is something to see; if the user collapses it later, it stays so.
  if (!reading.expanded) Expand(reading.parent);
  reading.expanded = true;
}

void FolderTree::Append(const Reading& reading, const std::string& name, bool isFolder) {
  const std::string path = Joined(reading.folder, name);
  const wxString label = isFolder ? LabelOf(name, path) : Shown(text::Printable(name));
  const wxTreeItemId item =
      AppendItem(reading.parent, label, kFile, kFile, new Entry(name, isFolder, label));
  if (isFolder) AppendFolder(item, path);
  if (path != selected_) return;
  selected_.clear();
  SelectItem(item);
}

void FolderTree::AppendFolder(wxTreeItemId item, const std::string& path) {
  const bool isUploads = IsUploads(path);
  for (const wxTreeItemIcon state : {wxTreeItemIcon_Normal, wxTreeItemIcon_Selected}) {
    SetItemImage(item, isUploads ? kUpload : kClosed, state);
  }
  for (const wxTreeItemIcon state : {wxTreeItemIcon_Expanded, wxTreeItemIcon_SelectedExpanded}) {
    SetItemImage(item, isUploads ? kUpload : kOpen, state);
  }
  SetItemHasChildren(item);
  if (expanded_.contains(path)) ReadFolder(item);
}

void FolderTree::ReadFolder(wxTreeItemId item) {
  static_cast<Entry*>(GetItemData(item))->SetRead();
  SetItemHasChildren(item, false);
  BeginReading(item, PathOf(item));
}

std::string FolderTree::PathOf(wxTreeItemId item) const {
  if (item == GetRootItem()) return folder_;
  return Joined(PathOf(GetItemParent(item)), NameOf(*this, item));
}

std::string FolderTree::SelectedPath() const {
  const wxTreeItemId item = GetSelection();
  return item.IsOk() ? PathOf(item) : std::string();
}

std::string FolderTree::FolderOf(wxTreeItemId item) const {
  if (!item.IsOk() || item == GetRootItem()) return folder_;
  return PathOf(EntryOf(*this, item).IsFolder() ? item : GetItemParent(item));
}

void FolderTree::OnExpanding(wxTreeEvent& event) {
  const wxTreeItemId item = event.GetItem();
  expanded_.insert(PathOf(item));
  if (EntryOf(*this, item).IsUnread()) ReadFolder(item);
}

void FolderTree::OnActivated(wxTreeEvent& event) {
  const wxTreeItemId item = event.GetItem();
  const std::string path = opens_ == Opens::kFiles ? PathOf(item) : FolderOf(item);
  platform::OpenWithShell(platform::PathTextForUser(path));
}

}  // namespace ui
