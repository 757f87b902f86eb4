#pragma once

// The page that shows a folder without a first page of its own: what is in it, with links. It needs
// nothing from elsewhere but small previews of the folder's own pictures, and has no script. Names
// come from strangers, and are harmless wherever they appear.

#include <optional>
#include <string>
#include <vector>

#include "files/client_files.h"
#include "net/task.h"

namespace ModWeb {

struct FolderListRequest {
  std::string folder;                // path text that ends in a separator
  std::string urlPath;               // decoded, begins and ends with "/"
  std::string query;                 // as received, "sort=size&order=desc"; the unknown is ignored
  bool hasStyle = false;             // whether the site has a "/style.css"
  std::vector<std::string> leftOut;  // names that are not shown here, in any case
};

/// The page, in UTF-8; it has relative links, so its URL must end with "/". None if the folder
/// cannot be read. Hidden names, and links that lead out of where clients are confined, are left
/// out. Of a large folder the first 5,000 names are shown. Suspends every few milliseconds. `files`
/// must outlive the task.
net::Task<std::optional<std::string>> BuildFolderList(const files::ClientFiles& files,
                                                      FolderListRequest request);

}  // namespace ModWeb
