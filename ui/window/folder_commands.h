#pragma once

// What the user can do with the folders of the services: see, open and make them, share others, put
// files into them, and make the folder into which everybody may upload.

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core/service.h"
#include "ui/pages/shared_folder.h"
#include "ui/window/manager.h"

class wxFrame;

namespace ui {

class Content;
class StatusBar;

class FolderCommands {
 public:
  /// `onChanged` makes changed settings of a service hold. All arguments must outlive this object.
  FolderCommands(wxFrame& window, StatusBar& status,
                 std::function<void(core::ServiceKind)> onChanged)
      : window_(window), status_(status), onChanged_(std::move(onChanged)) {}

  /// Sets where results are shown, and what is acted on. Must be called before anything else.
  void ActOn(Content& content) { content_ = &content; }
  void Attach(const Manager& manager) { manager_ = &manager; }

  /// Shows the main folder of a service as last loaded, and whom it is open to.
  void ShowRootDir(core::ServiceKind service);

  /// Reads the folder of the Web or the FTP service anew; the mail service has no tree.
  void ShowContent(core::ServiceKind service);

  /// The same for the user, who has read what has become of copies by then.
  void Refresh(core::ServiceKind service);

  void OpenRoot(core::ServiceKind service);
  void MakeRoot(core::ServiceKind service);
  void OpenFolderOf(const std::string& path);

  /// Asks for another main folder; it holds at once.
  void ChangeRoot(core::ServiceKind service);

  /// Makes the folder "upload" in the FTP service's and lets everybody upload there, and only
  /// there.
  void MakeUploadFolder();

  SharedFolder::Questions Questions();

 private:
  bool MakeFolder(const std::string& folder);
  bool Save(std::string_view section, std::string_view key, const std::string& folder);
  void ShowUploads();
  bool MayAsk() const;

  wxFrame& window_;
  StatusBar& status_;
  std::function<void(core::ServiceKind)> onChanged_;
  Content* content_ = nullptr;
  const Manager* manager_ = nullptr;
};

}  // namespace ui
