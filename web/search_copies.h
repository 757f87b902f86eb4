#pragma once

// Copies served pages next to the site's search index, one at a time. The work belongs to the
// service, not to the client that requested the page, and yields to other events.

#include <deque>
#include <string>

#include "core/service_environment.h"
#include "files/client_files.h"
#include "net/background_worker.h"
#include "settings/program.h"

namespace ModWeb {

class SearchCopies {
 public:
  explicit SearchCopies(const core::ServiceEnvironment& environment);

  /// Copies the page `resource`, a name below the Web root `root`, if the site has an index.
  /// Ignored if the same copy waits already, or a hundred others do. A failure is logged.
  void AddServed(const files::ClientFiles& site, const std::string& root,
                 const std::string& resource);

  /// Ends the current copy and forgets those that wait.
  void Stop();

 private:
  struct Job {
    std::string from;  // these are path texts
    std::string to;    // is replaced
    std::string name;
    bool operator==(const Job&) const = default;
  };

  void Add(Job job);
  net::Task<> Work();
  net::Task<std::error_code> Copy(Job job);

  const settings::Program& program_;
  std::deque<Job> waiting_;
  net::BackgroundWorker worker_;
};

}  // namespace ModWeb
