#pragma once

// The folder of a service: its tree, into which files can be dropped, and below it a bar that shows
// how far they have been copied, then what has become of them. Copying goes on while the window is
// hidden and ends with it. The questions that it needs are others' to ask.

#include <wx/panel.h>
#include <wx/timer.h>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "files/copying.h"
#include "ui/pages/folder_tree.h"

class wxButton;
class wxGauge;
class wxStaticText;

namespace ui {

class SharedFolder : public wxPanel {
 public:
  struct Questions {
    /// The path texts of the files that the user chose.
    std::function<std::vector<std::string>()> chooseFiles;
    /// Whether the user can be asked now: else later.
    std::function<bool()> mayAsk;
    /// What to do about a file that has the place of `path`; none ends the copying.
    std::function<std::optional<files::Copying::Decision>(const std::string& path)> mayReplace;
  };

  /// `tree`: the name of the tree.
  SharedFolder(wxWindow* parent, const char* tree, FolderTree::Opens opens, Questions questions);
  ~SharedFolder() override;

  FolderTree& Tree() { return *tree_; }

  /// Asks for files and copies them into the selected folder, or into the whole one.
  void AddFiles();

  /// Copies files and folders into a folder, after those that are being copied. All are path texts.
  void Copy(std::vector<std::string> chosen, const std::string& into);

  /// The same for a drop at that place in the tree; the names are the system's.
  void Drop(const wxPoint& place, const wxArrayString& names);

  /// Hides what has become of the last copies.
  void ForgetOutcome();

  bool IsCopying() const { return copying_ != nullptr; }

 private:
  struct Job {
    std::vector<std::string> chosen;
    std::string into;
  };

  wxSizer* MakeBar();
  void Work();
  void Ask();
  void End();
  void Cancel();
  void ShowProgress();
  void ShowBar(bool copies);
  void ShowOutcome(const std::string& text);

  Questions questions_;
  FolderTree* tree_;
  wxStaticText* lblCopying_;
  wxGauge* barCopying_;
  wxButton* cmdCancelCopying_;
  wxStaticText* lblCopied_;
  std::deque<Job> jobs_;  // the first is in progress
  std::unique_ptr<files::Copying> copying_;
  files::Copying::Report outcome_;               // of the jobs since nothing was copied
  std::chrono::steady_clock::time_point shown_;  // when the progress was last shown
  wxTimer timer_;
};

}  // namespace ui
