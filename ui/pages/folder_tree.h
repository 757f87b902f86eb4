#pragma once

// tvWebDir: a folder as a tree, its subfolders first, then its files. A folder is read and shown a
// few entries at a time, so that one with a hundred thousand of them holds up nobody; a subfolder
// is read when it is opened.

#include <wx/timer.h>
#include <wx/treectrl.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/directory.h"

namespace ui {

class FolderTree : public wxTreeCtrl {
 public:
  explicit FolderTree(wxWindow* parent);
  ~FolderTree() override;

  /// Shows `folder`, a path text, instead of what was shown.
  void ShowFolder(const std::string& folder);

  /// Whether everything that was asked for is shown.
  bool IsComplete() const { return readings_.empty(); }

  /// The path text of the entry that is selected, or an empty one.
  std::string SelectedPath() const;

 private:
  // The order of an NTFS directory, folders first.
  using SortKey = std::pair<bool, std::string>;

  // A folder on its way into the tree: read as a whole first, since it is not read in order.
  struct Reading {
    wxTreeItemId parent;
    platform::DirectoryReader reader;
    bool read = false;
    bool expanded = false;
    std::multimap<SortKey, std::string> entries;
  };

  void BeginReading(wxTreeItemId parent, const std::string& folder);
  void Work();
  static void ReadMore(Reading& reading);
  void ShowMore(Reading& reading);
  void Append(wxTreeItemId parent, const std::string& name, bool isFolder);
  std::string PathOf(wxTreeItemId item) const;
  void OnExpanding(wxTreeEvent& event);
  void OnActivated(wxTreeEvent& event);

  std::string folder_;
  std::deque<std::unique_ptr<Reading>> readings_;  // the first one is worked on
  wxTimer timer_;
};

}  // namespace ui
