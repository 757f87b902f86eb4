#pragma once

// The page of a folder's list as HTML, from what was read of the folder. The frame is
// folder_list.html, where names in {{}} mark what this fills in.

#include <string>
#include <string_view>

#include "web/http/list_order.h"

namespace ModWeb {

struct FolderPageFrame {
  std::string urlPath;    // decoded, begins and ends with "/"
  ListOrder order = {};   // in which the entries will come
  bool hasStyle = false;  // whether the site's own "/style.css" is to follow ours
  std::size_t folders = 0, files = 0;
  std::size_t cutAt = 0;  // 0: everything is shown
};

/// To be written piece by piece: the beginning, each entry in turn, the end.
class FolderPage {
 public:
  explicit FolderPage(const FolderPageFrame& frame);

  void Add(const ListedEntry& entry);

  /// The whole page. Nothing can be added any more.
  std::string Finish();

 private:
  std::string_view end_;
  std::string page_;
};

/// The text of folder_list.html.
std::string_view FolderPageTemplate();

}  // namespace ModWeb
