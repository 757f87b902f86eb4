#pragma once

// tvWebDir: a folder as a tree, subfolders first and then files. A folder is read and shown a few
// entries at a time, so that a hundred thousand of them do not block the window. Subfolders are
// read when they are expanded.

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

  /// Replaces the tree by that of `folder`, a path text.
  void ShowFolder(const std::string& folder);

  /// Whether everything requested has been read and shown.
  bool IsComplete() const { return readings_.empty(); }

  /// The path text of the selected entry; empty if none is selected.
  std::string SelectedPath() const;

 private:
  // The order of an NTFS directory, with folders first.
  using SortKey = std::pair<bool, std::string>;

  // A folder being added to the tree. It is read completely first, since the system lists it
  // unsorted.
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
  std::deque<std::unique_ptr<Reading>> readings_;  // the first is in progress
  wxTimer timer_;
};

}  // namespace ui
