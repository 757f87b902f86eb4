#pragma once

// The folder of a service as a tree, subfolders first and then files. A folder is read and shown a
// few entries at a time, so that a hundred thousand of them do not block the window. Subfolders are
// read when they are expanded. The folder that clients may change is marked.

#include <wx/timer.h>
#include <wx/treectrl.h>

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "platform/directory.h"

namespace ui {

class FolderTree : public wxTreeCtrl {
 public:
  /// What a double click opens: of files that strangers have sent only their folder.
  enum class Opens { kFiles, kFoldersOfFiles };

  FolderTree(wxWindow* parent, const char* name, Opens opens);
  ~FolderTree() override;

  /// Replaces the tree by that of `folder`, a path text. Of the same folder what is expanded and
  /// selected stays so.
  void ShowFolder(const std::string& folder);

  /// Shows the same folder anew, with `expanded`, a path text, expanded if it is in it.
  void ShowAgain(const std::string& expanded);

  /// Marks the folder with that path text, now and in future. Empty: none.
  void MarkUploads(const std::string& folder);

  /// Whether everything requested has been read and shown.
  bool IsComplete() const { return readings_.empty(); }

  /// The path text of the selected entry; empty if none is selected.
  std::string SelectedPath() const;

  /// The path text of the folder that an entry is, or is in; of the whole tree's if there is no
  /// entry. Empty if no folder is shown.
  std::string FolderOf(wxTreeItemId item) const;

 private:
  // The order of an NTFS directory, with folders first.
  using SortKey = std::pair<bool, std::string>;

  // A folder being added to the tree. It is read completely first, since the system lists it
  // unsorted.
  struct Reading {
    wxTreeItemId parent;
    std::string folder;
    platform::DirectoryReader reader;
    bool read = false;
    bool expanded = false;
    std::multimap<SortKey, std::string> entries;
  };

  void ShowSame();
  void BeginReading(wxTreeItemId parent, const std::string& folder);
  void Work();
  static void ReadMore(Reading& reading);
  void ShowMore(Reading& reading);
  void Append(const Reading& reading, const std::string& name, bool isFolder);
  void AppendFolder(wxTreeItemId item, const std::string& path);
  void ReadFolder(wxTreeItemId item);
  bool IsUploads(const std::string& path) const;
  wxString LabelOf(const std::string& name, const std::string& path) const;
  std::string PathOf(wxTreeItemId item) const;
  void OnExpanding(wxTreeEvent& event);
  void OnActivated(wxTreeEvent& event);

  const Opens opens_;
  std::string folder_;
  std::string uploads_;                            // for comparison; empty for none
  std::set<std::string> expanded_;                 // the paths of the folders
  std::string selected_;                           // to be selected when it comes
  std::deque<std::unique_ptr<Reading>> readings_;  // the first is in progress
  wxTimer timer_;
};

}  // namespace ui
