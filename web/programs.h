#pragma once

// The programs of the site: what a POST request runs. They are in cgi-bin below the Web root, and
// each writes a page of its name into the root itself.

#include <string>

#include "core/service_environment.h"
#include "files/client_files.h"
#include "web/cgi_queue.h"

namespace ModWeb {

class Programs {
 public:
  /// `site`: the files below the Web root. All must outlive this object.
  Programs(const core::ServiceEnvironment& environment, const files::ClientFiles& site);

  /// To be called when the Web root may have changed.
  void SetRoot(const std::string& root);

  /// `resource`: the name of a program below the folder.
  bool Exists(const std::string& resource) const;

  /// Runs an existing program, with `body` as its input, and returns its page (web/cgi_queue.h).
  net::Task<platform::File> Run(std::string resource, std::string body);

  void Stop() { queue_.Stop(); }

 private:
  core::Protection& protection_;
  const files::ClientFiles& site_;
  std::string root_;    // these are path texts
  std::string folder_;  // ends in a separator
  files::ClientFiles files_;
  CgiQueue queue_;
};

}  // namespace ModWeb
