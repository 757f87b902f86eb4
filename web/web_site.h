#pragma once

// What answers are made of, in either manner of answering.

#include <string>
#include <string_view>

#include "files/client_files.h"
#include "settings/program.h"
#include "text/path_text.h"
#include "web/programs.h"
#include "web/search_copies.h"
#include "web/web_options.h"

namespace ModWeb {

struct WebSite {
  /// The path text of a name below the Web root.
  std::string PathOf(std::string_view name) const {
    return ModCommon::AddSlash(options.WebRootDir) + std::string(name);
  }

  const settings::Program& program;
  const WebOptions& options;
  const files::ClientFiles& files;  // below the Web root
  Programs& programs;
  SearchCopies& searchCopies;
};

}  // namespace ModWeb
